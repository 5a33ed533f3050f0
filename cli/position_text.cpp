#include "position_text.h"

#include <array>
#include <cctype>
#include <string>
#include <vector>

#include "cli_error.h"

namespace orvan_cli {

namespace {

// Letters of the piece kinds 1 to 6 (pawn to king), lower case.
constexpr std::string_view kPieceLetters = "pnbrqk";
constexpr uint8_t kWhite = 8;

char PieceLetter(uint8_t code)
{
    const int kind = code & 7;
    if (code == OV_EMPTY || kind == 0 || kind > 6)
        return '.';
    const char letter = kPieceLetters[kind - 1];
    return (code & kWhite) != 0 ? static_cast<char>(std::toupper(letter)) : letter;
}

[[noreturn]] void BadFen(std::string_view fen, const std::string& why)
{
    throw CliError(kExitUsage, "bad FEN '" + std::string(fen) + "': " + why);
}

std::vector<std::string_view> SplitFields(std::string_view text)
{
    std::vector<std::string_view> fields;
    size_t i = 0;
    while (i < text.size()) {
        while (i < text.size() && text[i] == ' ')
            ++i;
        const size_t start = i;
        while (i < text.size() && text[i] != ' ')
            ++i;
        if (i > start)
            fields.push_back(text.substr(start, i - start));
    }
    return fields;
}

void ReadPlacement(std::string_view fen, std::string_view placement, sPosition& position)
{
    int rank = 7, file = 0;
    for (char c : placement) {
        if (c == '/') {
            if (file != 8)
                BadFen(fen, "rank " + std::to_string(rank + 1) + " does not have 8 squares");
            --rank;
            file = 0;
            if (rank < 0)
                BadFen(fen, "more than 8 ranks");
        } else if (c >= '1' && c <= '8') {
            file += c - '0';
        } else {
            const size_t kind = kPieceLetters.find(static_cast<char>(std::tolower(c)));
            if (kind == std::string_view::npos)
                BadFen(fen, std::string("'") + c + "' is no piece");
            if (file < 8)
                position.board[rank * 8 + file] =
                    static_cast<uint8_t>((kind + 1) | (std::isupper(c) != 0 ? kWhite : 0));
            ++file;
        }
        if (file > 8)
            BadFen(fen, "rank " + std::to_string(rank + 1) + " has more than 8 squares");
    }
    if (rank != 0 || file != 8)
        BadFen(fen, "the board needs 8 ranks of 8 squares");
}

void ReadCastling(std::string_view fen, std::string_view castling, sPosition& position)
{
    if (castling == "-")
        return;
    for (char c : castling) {
        switch (c) {
        case 'K': position.castleWhiteShort = 1; break;
        case 'Q': position.castleWhiteLong = 1; break;
        case 'k': position.castleBlackShort = 1; break;
        case 'q': position.castleBlackLong = 1; break;
        default: BadFen(fen, std::string("castling field '") + std::string(castling) + "' is not KQkq or -");
        }
    }
}

uint8_t ReadEnPassant(std::string_view fen, std::string_view square)
{
    if (square == "-")
        return OV_NO_EP_SQUARE;
    if (square.size() != 2 || square[0] < 'a' || square[0] > 'h' || (square[1] != '3' && square[1] != '6'))
        BadFen(fen, "en passant field '" + std::string(square) + "' is not a square on rank 3 or 6");
    return static_cast<uint8_t>((square[1] - '1') * 8 + (square[0] - 'a'));
}

constexpr std::array<const char*, 5> kIllegalReasons = {
    "", "a king is missing", "the side not to move is in check", "a pawn stands on the first or eighth rank",
    "more men than a game can have"};

}  // namespace

sPosition ParseFen(std::string_view fen)
{
    const auto fields = SplitFields(fen);
    if (fields.size() < 4)
        BadFen(fen, "it needs at least the fields placement, side, castling and en passant");
    sPosition position{};
    ReadPlacement(fen, fields[0], position);
    if (fields[1] != "w" && fields[1] != "b")
        BadFen(fen, "side to move '" + std::string(fields[1]) + "' is not w or b");
    position.sideToMove = fields[1] == "w" ? 1 : 0;
    ReadCastling(fen, fields[2], position);
    position.epSquare = ReadEnPassant(fen, fields[3]);
    const int32_t legality = OvIsLegalPos(&position);
    if (legality != OV_POS_LEGAL)
        BadFen(fen, legality > 0 && legality < static_cast<int32_t>(kIllegalReasons.size())
                        ? kIllegalReasons[legality]
                        : "the position cannot arise in a game");
    return position;
}

std::string FormatFen(const sPosition& position, int32_t fullMoveNumber)
{
    std::string fen;
    for (int rank = 7; rank >= 0; --rank) {
        int empty = 0;
        for (int file = 0; file < 8; ++file) {
            const char letter = PieceLetter(position.board[rank * 8 + file]);
            if (letter == '.') {
                ++empty;
                continue;
            }
            if (empty > 0)
                fen += static_cast<char>('0' + empty);
            empty = 0;
            fen += letter;
        }
        if (empty > 0)
            fen += static_cast<char>('0' + empty);
        if (rank > 0)
            fen += '/';
    }
    fen += (position.sideToMove & 1) != 0 ? " w " : " b ";
    std::string castling;
    if (position.castleWhiteShort != 0) castling += 'K';
    if (position.castleWhiteLong != 0) castling += 'Q';
    if (position.castleBlackShort != 0) castling += 'k';
    if (position.castleBlackLong != 0) castling += 'q';
    fen += castling.empty() ? "-" : castling;
    fen += ' ';
    if (position.epSquare < 64) {
        fen += static_cast<char>('a' + position.epSquare % 8);
        fen += static_cast<char>('1' + position.epSquare / 8);
    } else {
        fen += '-';
    }
    return fen + " 0 " + std::to_string(fullMoveNumber);
}

std::string BoardDiagram(const sPosition& position)
{
    std::string diagram;
    for (int rank = 7; rank >= 0; --rank) {
        diagram += static_cast<char>('1' + rank);
        diagram += ' ';
        for (int file = 0; file < 8; ++file) {
            diagram += ' ';
            diagram += PieceLetter(position.board[rank * 8 + file]);
        }
        diagram += '\n';
    }
    diagram += "   a b c d e f g h\n";
    return diagram;
}

}  // namespace orvan_cli
