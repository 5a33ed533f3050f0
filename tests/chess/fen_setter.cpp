#include "tests/chess/fen_setter.h"

#include "chess/move_generator.h"

sPosition PositionFromFen(std::string_view fen)
{
    sPosition position{};
    size_t at = 0;
    int rank = 7, file = 0;
    for (; at < fen.size() && fen[at] != ' '; ++at) {
        const char c = fen[at];
        if (c == '/') {
            --rank;
            file = 0;
        } else if (c >= '1' && c <= '8') {
            file += c - '0';
        } else {
            position.board[8 * rank + file++] = static_cast<uint8_t>(std::string_view(" pnbrqk  PNBRQK").find(c));
        }
    }
    const auto field = [&]() {
        while (at < fen.size() && fen[at] == ' ')
            ++at;
        const size_t end = std::min(fen.find(' ', at), fen.size());
        const std::string_view text = fen.substr(at, end - at);
        at = end;
        return text;
    };
    position.sideToMove = field() == "w" ? 1 : 0;
    const std::string_view castling = field();
    position.castleWhiteShort = castling.find('K') != std::string_view::npos;
    position.castleWhiteLong = castling.find('Q') != std::string_view::npos;
    position.castleBlackShort = castling.find('k') != std::string_view::npos;
    position.castleBlackLong = castling.find('q') != std::string_view::npos;
    const std::string_view ep = field();
    position.epSquare = ep.size() == 2 ? static_cast<uint8_t>((ep[0] - 'a') + 8 * (ep[1] - '1')) : OV_NO_EP_SQUARE;
    return position;
}

uint64_t Perft(sPosition& position, int depth)
{
    if (depth == 0)
        return 1;
    uint64_t nodes = 0;
    int32_t destinations[MaxDestinations];
    for (int from = 0; from < 64; ++from) {
        const int count = GenerateDestinations(&position, from, destinations);
        const uint8_t piece = position.board[from];
        const bool promotes = (piece == OV_WHITE_PAWN && from >= 48) || (piece == OV_BLACK_PAWN && from < 16);
        const int pieces = promotes ? 4 : 1;
        for (int i = 0; i < count; ++i) {
            if (depth == 1) {
                nodes += pieces;
                continue;
            }
            for (uint32_t promotion = 0; promotion < static_cast<uint32_t>(pieces); ++promotion) {
                sPosition child = position;
                ApplyMove(&child, static_cast<uint32_t>(from | destinations[i] << 8) | promotion << 14);
                nodes += Perft(child, depth - 1);
            }
        }
    }
    return nodes;
}
