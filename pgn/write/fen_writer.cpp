#include "pgn/write/fen_writer.h"

#include <charconv>

namespace {

// FEN letter of each piece code AND 15; "?" for the codes that are no piece.
constexpr char FenLetters[] = "?pnbrqk??PNBRQK?";

}  // namespace

size_t PositionToFen(const sPosition& position, uint32_t firstMoveNumber, char* dest)
{
    char* at = dest;
    for (int rank = 7; rank >= 0; --rank) {
        int emptyRun = 0;
        for (int file = 0; file < 8; ++file) {
            int code = position.board[8 * rank + file] & 15;
            if (code == 0) {
                ++emptyRun;
                continue;
            }
            if (emptyRun > 0)
                *at++ = static_cast<char>('0' + emptyRun);
            emptyRun = 0;
            *at++ = FenLetters[code];
        }
        if (emptyRun > 0)
            *at++ = static_cast<char>('0' + emptyRun);
        if (rank > 0)
            *at++ = '/';
    }

    *at++ = ' ';
    *at++ = position.sideToMove != 0 ? 'w' : 'b';

    *at++ = ' ';
    if (position.castleWhiteShort == 0 && position.castleWhiteLong == 0 &&
        position.castleBlackShort == 0 && position.castleBlackLong == 0)
        *at++ = '-';
    if (position.castleWhiteShort != 0)
        *at++ = 'K';
    if (position.castleWhiteLong != 0)
        *at++ = 'Q';
    if (position.castleBlackShort != 0)
        *at++ = 'k';
    if (position.castleBlackLong != 0)
        *at++ = 'q';

    *at++ = ' ';
    if (position.epSquare >= OV_NO_EP_SQUARE) {
        *at++ = '-';
    } else {
        *at++ = static_cast<char>('a' + (position.epSquare & 7));
        *at++ = static_cast<char>('1' + ((position.epSquare / 8) & 7));
    }

    *at++ = ' ';
    *at++ = '0';
    *at++ = ' ';
    at = std::to_chars(at, dest + FenTextSize - 1, firstMoveNumber + 1).ptr;
    *at = '\0';
    return static_cast<size_t>(at - dest);
}
