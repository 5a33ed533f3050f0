// The move generator and move application on sPosition. Every candidate move
// is tried by making it on the caller's record and taking it back: the
// functions that take a non-const position change it while they run and leave
// it as they found it. Squares are 0 to 63; moves are PackedMove words in the
// low 16 bits of a uint32_t.
#ifndef ORVAN_CHESS_MOVE_GENERATOR_H
#define ORVAN_CHESS_MOVE_GENERATOR_H

#include <cstdint>

#include "chess/position.h"
#include "orvan.h"

// Room a destination list needs: a queen in the middle of an empty board has
// 27 destinations.
inline constexpr int MaxDestinations = 28;

// 1 when a black (white) man attacks `square`, else 0. Read only.
int AttackedByBlack(const sPosition* position, int square);
int AttackedByWhite(const sPosition* position, int square);

// Moves the men from `from` to `to`, with the rook of a castling (king on
// e1/e8 moving to g or c) and the victim of an en passant capture (a pawn
// moving diagonally onto an empty square); no test of rights or legality.
// Returns the code that stood on `to`.
int MakeBoardMove(sPosition* position, int from, int to);
// Takes such a move back, given the code that moved and the code that
// MakeBoardMove returned.
void UndoBoardMove(sPosition* position, int from, int to, int piece, int captured);

// 1 when, after the move, the mover's king (the first in square order; square
// 63 when there is none) is not attacked. The mover's colour is that of the
// code on `from`.
int MoveKeepsKingSafe(sPosition* position, int from, int to);

// Fills `destinations` (MaxDestinations places) with the legal destination
// squares of the man on `from` and returns their number; 0 when `from` holds
// no man of the side to move or lies outside 0 to 63. A promotion counts once.
int GenerateDestinations(sPosition* position, int from, int32_t* destinations);

// 1 when the move's to square is a legal destination of its from square; the
// promotion bits play no part.
int MoveIsLegal(sPosition* position, uint32_t move);

// Applies the move without any test: en passant square, castling rights, the
// men, promotion (bits 0 give a queen), and the side to move. A word whose 16
// bits are 0 changes nothing.
void ApplyMove(sPosition* position, uint32_t move);

// The same steps for any word, the word 0 (the step a1-a1) included, for the
// trial of a move that describes it.
void ApplyMoveSteps(sPosition* position, uint32_t move);

// ApplyMoveSteps for a move that only takes the man on `from` to `to`: no
// castling (a king's two-square step from e1 or e8), no en passant (a pawn
// changing file onto an empty square), no promotion (a pawn leaving its
// seventh rank). Any other move is not played right.
inline void ApplyPlainMove(sPosition* position, int from, int to)
{
    const uint8_t piece = position->board[from];
    UpdateMoveFields(position, piece, from, to);
    position->board[to] = piece;
    position->board[from] = 0;
    position->sideToMove ^= 1;
}

#endif
