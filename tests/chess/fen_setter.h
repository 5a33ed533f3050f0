// Test-only: a minimal FEN setter and the perft count, so that the chess core is tested on its own.
#ifndef ORVAN_TESTS_CHESS_FEN_SETTER_H
#define ORVAN_TESTS_CHESS_FEN_SETTER_H

#include <cstdint>
#include <string_view>

#include "orvan.h"

// Placement, side, castling (fields get 1) and en passant of well-formed FEN text; nothing sanitised.
sPosition PositionFromFen(std::string_view fen);

// The move word from `from` to `to`, promotion piece in bits 14 and 15.
constexpr uint32_t Move(int from, int to, uint32_t promotion = 0) { return uint32_t(from | to << 8) | promotion << 14; }

// Leaf nodes of the move tree to `depth` plies, each promotion counted as four moves.
uint64_t Perft(sPosition& position, int depth);

#endif
