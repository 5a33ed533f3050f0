// The fields of a PackedMove word. Only the low 16 bits of a word count; the
// marker bits 6 and 7 never reach the move logic.
#ifndef ORVAN_CHESS_PACKED_MOVE_H
#define ORVAN_CHESS_PACKED_MOVE_H

#include <cstdint>

constexpr int MoveFrom(uint32_t move) { return static_cast<int>(move & 63); }
constexpr int MoveTo(uint32_t move) { return static_cast<int>((move >> 8) & 63); }
constexpr int MovePromotion(uint32_t move) { return static_cast<int>((move >> 14) & 3); }

#endif
