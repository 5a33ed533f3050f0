// Check, mate and stalemate after a move.
#include "chess/attacks.h"
#include "chess/board_view.h"
#include "chess/destination_walk.h"
#include "chess/move_generator.h"
#include "chess/move_notation.h"
#include "chess/piece_codes.h"
#include "chess/view_rules.h"

int CheckAndNoMove(sPosition* position)
{
    BoardView view;
    if (ReadOrdinaryView(*position, view))
        return CheckAndNoMoveOnView(view, GuardOfSideToMove(view));
    KingWatch watch = WatchSideToMove(position);
    LookAtKing(watch);
    return (watch.kingAttacked ? 1 : 0) | (SideToMoveHasLegalMove(watch) ? 0 : 2);
}

int SideToMoveInCheck(const sPosition* position)
{
    if (WhiteToMove(*position))
        return SquareAttacked<false>(position->board, FirstSquareHolding(position->board, OV_WHITE_KING));
    return SquareAttacked<true>(position->board, FirstSquareHolding(position->board, OV_BLACK_KING));
}

int SideToMoveHasNoMove(sPosition* position) { return CheckAndNoMove(position) >> 1; }

int MoveOutcome(sPosition* position, uint32_t move)
{
    // The whole record is kept and put back, so that a word the position
    // does not allow (a castling through men, say) leaves no trace.
    const sPosition before = *position;
    ApplyMoveSteps(position, move);
    const int outcome = CheckAndNoMove(position);
    *position = before;
    return outcome;
}
