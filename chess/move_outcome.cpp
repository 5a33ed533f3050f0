// Check, mate and stalemate after a move.
#include "chess/attacks.h"
#include "chess/destination_walk.h"
#include "chess/move_generator.h"
#include "chess/move_notation.h"
#include "chess/piece_codes.h"

int SideToMoveInCheck(const sPosition* position)
{
    if (WhiteToMove(*position))
        return SquareAttacked<false>(position->board, FirstSquareHolding(position->board, OV_WHITE_KING));
    return SquareAttacked<true>(position->board, FirstSquareHolding(position->board, OV_BLACK_KING));
}

int SideToMoveHasNoMove(sPosition* position)
{
    KingWatch watch = WatchSideToMove(position);
    return SideToMoveHasLegalMove(watch) ? 0 : 1;
}

int MoveOutcome(sPosition* position, uint32_t move)
{
    // The whole record is kept and put back, so that a word the position
    // does not allow (a castling through men, say) leaves no trace.
    const sPosition before = *position;
    ApplyMoveSteps(position, move);
    // The check test is the one the legal move search needs first, so the
    // two share it.
    KingWatch watch = WatchSideToMove(position);
    LookAtKing(watch);
    const int check = watch.kingAttacked ? 1 : 0;
    const int stuck = SideToMoveHasLegalMove(watch) ? 0 : 1;
    *position = before;
    return check | (stuck << 1);
}
