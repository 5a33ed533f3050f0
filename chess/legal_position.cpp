// The legality test of a whole position.
#include <array>

#include "chess/attacks.h"
#include "chess/piece_codes.h"
#include "orvan.h"

namespace {

enum PositionVerdict : int32_t {
    PositionLegal = 0,
    PositionKingMissing = 1,
    PositionOpponentInCheck = 2,
    PositionPawnOnEdgeRank = 3,
    PositionTooManyMen = 4,
};

// Whether one side has more men of a kind than promotions can give it.
bool TooManyMen(const std::array<int, 16>& count, uint8_t colourBit)
{
    const auto of = [&](int kind) { return count[colourBit | kind]; };
    int men = 0;
    for (int kind = PawnKind; kind <= KingKind; ++kind)
        men += of(kind);
    const int pawns = of(PawnKind);
    return men > 16 || of(KingKind) > 1 || of(QueenKind) + pawns > 9 || of(RookKind) + pawns > 10 ||
           of(BishopKind) + pawns > 10 || of(KnightKind) + pawns > 10 || pawns > 8;
}

}  // namespace

int32_t OvIsLegalPos(const sPosition* position)
{
    if (position == nullptr)
        return PositionKingMissing;
    const uint8_t* board = position->board;
    const bool white = WhiteToMove(*position);
    const int whiteKing = FindFirstSquare(board, OV_WHITE_KING);
    if (whiteKing < 0)
        return PositionKingMissing;
    if (!white && SquareAttacked<false>(board, whiteKing))
        return PositionOpponentInCheck;
    const int blackKing = FindFirstSquare(board, OV_BLACK_KING);
    if (blackKing < 0)
        return PositionKingMissing;
    if (white && SquareAttacked<true>(board, blackKing))
        return PositionOpponentInCheck;
    for (int file = 0; file < 8; ++file)
        if ((board[file] & 7) == PawnKind || (board[56 + file] & 7) == PawnKind)
            return PositionPawnOnEdgeRank;
    // Bytes above 15 are no men and are not counted.
    std::array<int, 16> count{};
    for (int square = 0; square < 64; ++square)
        if (board[square] < count.size())
            ++count[board[square]];
    if (TooManyMen(count, WhiteBit) || TooManyMen(count, 0))
        return PositionTooManyMen;
    return PositionLegal;
}
