#include "pgn/read/fen_reader.h"

#include <cstring>

#include "chess/position.h"
#include "frame/diagnostics.h"

namespace {

// Index = piece code of sPosition.
constexpr char FenPieceLetters[] = " pnbrqk  PNBRQK";

bool IsFenBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\v';
}

const char* SkipBlanks(const char* at)
{
    while (IsFenBlank(*at)) {
        ++at;
    }
    return at;
}

const char* SkipField(const char* at)
{
    while (*at != '\0' && !IsFenBlank(*at)) {
        ++at;
    }
    return at;
}

bool AtFieldEnd(const char* at)
{
    return *at == '\0' || IsFenBlank(*at);
}

// The board field, in FEN order from a8 to h1. Only the total of squares
// counts: rank separators and rank lengths are not looked at.
const char* ReadBoard(sPosition* position, const char* at, int32_t* faults)
{
    uint8_t squares[64] = {};
    int count = 0;
    for (; !AtFieldEnd(at) && count < 64; ++at) {
        char c = *at;
        if (c >= '0' && c <= '9') {
            count += c - '0';
            if (count > 64) {
                count = 64;
            }
        } else if (const char* letter = std::strchr(FenPieceLetters, c);
                   letter != nullptr && c != ' ') {
            squares[count++] = static_cast<uint8_t>(letter - FenPieceLetters);
        }
    }
    if (count < 64) {
        ++*faults;
    }
    for (int rank = 0; rank < 8; ++rank) {
        std::memcpy(position->board + 8 * (7 - rank), squares + 8 * rank, 8);
    }
    return at;
}

const char* ReadCastling(sPosition* position, const char* at)
{
    position->castleWhiteLong = 0;
    position->castleWhiteShort = 0;
    position->castleBlackLong = 0;
    position->castleBlackShort = 0;
    for (; !AtFieldEnd(at); ++at) {
        switch (*at) {
        case 'K': position->castleWhiteShort = 1; break;
        case 'Q': position->castleWhiteLong = 1; break;
        case 'k': position->castleBlackShort = 1; break;
        case 'q': position->castleBlackLong = 1; break;
        default: break;
        }
    }
    return at;
}

const char* ReadEnPassant(sPosition* position, const char* at, int32_t* faults)
{
    position->epSquare = OV_NO_EP_SQUARE;
    int rank = 1;
    int file = -1;
    for (; !AtFieldEnd(at); ++at) {
        char c = *at;
        if (c == '-') {
            rank = 8;
            file = 0;
        } else if (c >= 'a' && c <= 'h') {
            file = c - 'a';
        } else if (c >= '1' && c <= '8') {
            rank = c - '1';
        }
    }
    if (file >= 0 && (rank == 2 || rank == 5 || rank == 8)) {
        int square = 8 * rank + file;
        position->epSquare = static_cast<uint8_t>(square > 64 ? 64 : square);
    } else {
        ++*faults;
    }
    return at;
}

}  // namespace

int32_t ReadFen(sPosition* position, uint32_t* firstMoveNumber, const char* text)
{
    int32_t faults = 0;
    const char* at = ReadBoard(position, text, &faults);

    at = SkipBlanks(at);
    position->sideToMove = 1;
    if (*at == 'b') {
        position->sideToMove = 0;
    } else if (*at != 'w') {
        ++faults;
    }
    at = SkipBlanks(SkipField(at));

    at = SkipBlanks(ReadCastling(position, at));
    at = ReadEnPassant(position, at, &faults);

    at = SkipBlanks(at);
    if (*at == '\0') {
        ++faults;
    } else {
        at = SkipBlanks(SkipField(at));  // the halfmove clock is not used
        if (*at == '\0') {
            ++faults;
        } else {
            uint32_t number = 0;
            for (; *at >= '0' && *at <= '9' && number < 100000000; ++at) {
                number = 10 * number + static_cast<uint32_t>(*at - '0');
            }
            if (number > 0) {
                *firstMoveNumber = number - 1;
            }
        }
    }

    SanitizeCastling(position);
    if (SanitizeEnPassant(position, 1) == 0) {
        DebugTrace("removing illegal en passant flag.");
    }
    return faults;
}
