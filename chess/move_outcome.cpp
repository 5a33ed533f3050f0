// Check, mate and stalemate after a move.
#include "chess/apply_move_steps.h"
#include "chess/attacks.h"
#include "chess/destination_walk.h"
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
    AnyDestinationSink sink;
    for (int square = 0; square < 64; ++square)
        if (VisitDestinations(watch, square, sink))
            return 0;
    return 1;
}

int MoveOutcome(sPosition* position, uint32_t move)
{
    // The whole record is kept and put back, so that a word the position
    // does not allow (a castling through men, say) leaves no trace.
    const sPosition before = *position;
    ApplyMoveSteps(position, move);
    const int check = SideToMoveInCheck(position);
    const int stuck = SideToMoveHasNoMove(position);
    *position = before;
    return check | (stuck << 1);
}
