// A position record that carries its square-set view along as moves are
// played on it, for the callers that walk a line move by move (the PGN
// reader and writer): the view and the king's guard are brought up to date
// by each move instead of being read again from the 64 bytes for every
// question. Every answer equals the one of the function on the bare record.
#ifndef ORVAN_CHESS_TRACKED_POSITION_H
#define ORVAN_CHESS_TRACKED_POSITION_H

#include <cstdint>

#include "chess/board_view.h"
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
SquareSet TrackedSquaresHolding(const TrackedPosition& tracked, uint8_t code);

// The squares of the men of kind `kind` (knight to queen) of the side to
// move for which MoveIsLegal on the record allows the move to `to`.
SquareSet TrackedPieceOrigins(TrackedPosition& tracked, int kind, int to);

// MoveIsLegal on the record (left as it was).
bool TrackedMoveIsLegal(TrackedPosition& tracked, uint32_t move);

// OvGetMoveInfo of `move` on the record; then plays the move as
// ApplyMove plays it. With `findStalemate` false the search for a legal
// reply runs only after a check, and a stalemate gives no outcome bits: for
// a text whose stalemate mark is blank.
int32_t DescribeTrackedMove(TrackedPosition& tracked, uint32_t move, bool findStalemate = true);

#endif
