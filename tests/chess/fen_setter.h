// Test-only helpers: a minimal FEN setter for well-formed FEN text, and the
// perft node count built on the generator. The library's own FEN reader
// lives with the PGN reader; these exist so that the chess core can be
// tested and measured on its own.
#ifndef ORVAN_TESTS_CHESS_FEN_SETTER_H
#define ORVAN_TESTS_CHESS_FEN_SETTER_H

#include <cstdint>
#include <string_view>

#include "orvan.h"

// Sets `position` from the placement, side, castling and en passant fields
// of well-formed FEN text (standard castling letters only). The castling
// fields get 1; nothing is sanitised.
sPosition PositionFromFen(std::string_view fen);

// The move word from `from` to `to`, promotion piece in bits 14 and 15.
constexpr uint32_t Move(int from, int to, uint32_t promotion = 0) { return uint32_t(from | to << 8) | promotion << 14; }

// Leaf nodes of the move tree to `depth` plies, each promotion counted as
// four moves.
uint64_t Perft(sPosition& position, int depth);

#endif
