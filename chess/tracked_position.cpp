// Playing moves on a tracked position, and the move tests on a record without a view.
#include "chess/tracked_position.h"

#include <bit>

#include "chess/board_geometry.h"
#include "chess/move_generator.h"
#include "chess/packed_move.h"
#include "chess/piece_codes.h"

namespace {

// Whether a move may change more than its two squares, or put another man
// on `to` than the one that leaves `from`: a two-square king step from its
// home square (castling), a pawn changing file onto an empty square (en
// passant), a pawn leaving its seventh rank (promotion). Such moves are
// rare, and the view is read again after them.
bool ReshapesBoard(uint8_t piece, int from, int to, uint8_t captured)
{
    if ((piece & 7) == KingKind)
        return (from == 4 || from == 60) && (to == from + 2 || to == from - 2);
    if ((piece & 7) != PawnKind)
        return false;
    return (captured == 0 && FileOf(from) != FileOf(to)) || (piece == OV_WHITE_PAWN && from >= 48) ||
           (piece == OV_BLACK_PAWN && from < 16);
}

void GuardWhenOrdinary(TrackedPosition& tracked)
{
    if (tracked.ordinary)
        tracked.guard = GuardOfSideToMove(tracked.view);
}

}  // namespace

void TrackPosition(TrackedPosition& tracked, const sPosition& position)
{
    tracked.record = position;
    tracked.ordinary = ReadOrdinaryView(tracked.record, tracked.view);
    GuardWhenOrdinary(tracked);
}

void PlayTrackedMove(TrackedPosition& tracked, uint32_t move)
{
    if ((move & 0xFFFF) == 0)
        return;
    sPosition& record = tracked.record;
    const int from = MoveFrom(move);
    const int to = MoveTo(move);
    const uint8_t piece = record.board[from];
    const uint8_t captured = record.board[to];
    if (tracked.ordinary && !ReshapesBoard(piece, from, to, captured)) {
        ApplyPlainMove(&record, from, to);
        tracked.ordinary = MoveOnOrdinaryView(record, tracked.view, from, to, piece, captured);
    } else {
        ApplyMoveSteps(&record, move);
        tracked.ordinary = ReadOrdinaryView(record, tracked.view);
    }
    GuardWhenOrdinary(tracked);
}

SquareSet PieceOriginsOnRecord(sPosition& position, int kind, int to)
{
    const uint8_t own = static_cast<uint8_t>(kind | (WhiteToMove(position) ? WhiteBit : 0));
    SquareSet origins = 0;
    for (SquareSet men = SquaresHolding(position, own) & ReachableFrom(kind, to); men != 0; men &= men - 1) {
        const int from = std::countr_zero(men);
        if (MoveIsLegal(&position, static_cast<uint32_t>(from | to << 8)))
            origins |= SquareBit(from);
    }
    return origins;
}
