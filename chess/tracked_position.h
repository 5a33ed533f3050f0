// A position record that carries its square-set view along as moves are
// played on it, for the callers that walk a line move by move (the PGN
// reader and writer): the view and the king's guard are brought up to date
// by each move instead of being read again from the 64 bytes for every
// question. Every answer equals the one of the function on the bare record.
#ifndef ORVAN_CHESS_TRACKED_POSITION_H
#define ORVAN_CHESS_TRACKED_POSITION_H

#include <cstdint>

#include "chess/board_view.h"
#include "chess/move_generator.h"
#include "chess/packed_move.h"
#include "chess/piece_codes.h"
#include "chess/view_rules.h"
#include "orvan.h"

struct TrackedPosition {
    sPosition record;
    bool ordinary;    // whether the record is ordinary (see BoardView)
    BoardView view;   // of the record when it is ordinary
    KingGuard guard;  // likewise
};

// Starts tracking a copy of `position`.
void TrackPosition(TrackedPosition& tracked, const sPosition& position);

// ApplyMove on the record, with the view following.
void PlayTrackedMove(TrackedPosition& tracked, uint32_t move);

// SquaresHolding on the record.
inline SquareSet TrackedSquaresHolding(const TrackedPosition& tracked, uint8_t code)
{
    if (tracked.ordinary && (IsWhiteMan(code) || IsBlackMan(code)))
        return tracked.view.Pieces(code & 7, (code & WhiteBit) != 0);
    return SquaresHolding(tracked.record, code);
}

// The squares of the men of kind `kind` (knight to queen) of the side to
// move for which MoveIsLegal on `position` allows the move to `to`, tried
// one by one: for a record without a view.
SquareSet PieceOriginsOnRecord(sPosition& position, int kind, int to);

// PieceOriginsOnRecord on the record.
inline SquareSet TrackedPieceOrigins(TrackedPosition& tracked, int kind, int to)
{
    if (tracked.ordinary)
        return PieceOriginsOnView(tracked.view, tracked.guard, kind, to);
    return PieceOriginsOnRecord(tracked.record, kind, to);
}

// MoveIsLegal on the record (left as it was).
inline bool TrackedMoveIsLegal(TrackedPosition& tracked, uint32_t move)
{
    if (!tracked.ordinary)
        return MoveIsLegal(&tracked.record, move) != 0;
    const int from = MoveFrom(move);
    const uint8_t piece = tracked.record.board[from];
    if (!(tracked.view.whiteToMove ? IsWhiteMan(piece) : IsBlackMan(piece)))
        return false;
    return ViewMoveIsLegal(tracked.view, tracked.guard, piece & 7, from, MoveTo(move));
}

// OvGetMoveInfo of `move` on the record; then plays the move as
// ApplyMove plays it. With `findStalemate` false the search for a legal
// reply runs only after a check, and a stalemate gives no outcome bits: for
// a text whose stalemate mark is blank.
int32_t DescribeTrackedMove(TrackedPosition& tracked, uint32_t move, bool findStalemate = true);

#endif
