// What move text needs to know about a move on its position.
#ifndef ORVAN_CHESS_MOVE_NOTATION_H
#define ORVAN_CHESS_MOVE_NOTATION_H

#include <cstdint>

#include "orvan.h"

// The default symbols of move text.
inline constexpr NotationTable DefaultNotation = OV_DEFAULT_NOTATION_TABLE;

// Whether the text of a stalemating move carries a mark in `table` (null
// for the default table), which only a search for a legal reply finds.
bool StalemateMarked(const NotationTable* table);

// 1 for the two-square king step from e1 (white to move, white king on from)
// or e8 (black to move, black king on from), else 0.
int IsCastlingMove(const sPosition* position, uint32_t move);

// 1 when a pawn of the side to move changes file onto an empty square; the
// en passant square is not looked at.
int IsEnPassantCapture(const sPosition* position, uint32_t move);

// 1 when a white pawn moves from the seventh rank or a black one from the
// second, whoever is to move.
int IsPromotion(const sPosition* position, uint32_t move);

// Bit 1: another man of the same code on another file can legally reach the
// to square; bit 2: one on the same file can.
int FindAmbiguity(sPosition* position, uint32_t move);

// 1 when the first king of the side to move (square 63 when there is none)
// is attacked.
int SideToMoveInCheck(const sPosition* position);

// Whether the side to move is in check (bit 1) and whether it has no legal
// move (bit 2). The check test is the one the legal move search needs
// first, so the two share it.
int CheckAndNoMove(sPosition* position);

// 1 when no man of the side to move has a legal destination.
int SideToMoveHasNoMove(sPosition* position);

// The opponent's state after the move: 1 in check, 2 without a legal move,
// 3 both, 0 neither. The position comes back unchanged, for any word.
int MoveOutcome(sPosition* position, uint32_t move);

#endif
