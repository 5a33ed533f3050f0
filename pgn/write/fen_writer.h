// Writing a position as FEN text.
#ifndef ORVAN_PGN_WRITE_FEN_WRITER_H
#define ORVAN_PGN_WRITE_FEN_WRITER_H

#include <cstddef>
#include <cstdint>

#include "orvan.h"

// Room the FEN of any position fits in, terminator included; the longest
// text has 94 characters.
inline constexpr size_t FenTextSize = 256;

// Writes the six FEN fields of `position` and a terminator into `dest`
// (FenTextSize characters): placement from rank 8 down, "w" unless
// sideToMove is 0, castling letters for every field that is not 0 ("-" for
// none), the en passant square or "-", half-move clock 0, and
// firstMoveNumber + 1. Board bytes are read AND 15; codes that are no piece
// are written "?". Returns the length of the text.
size_t PositionToFen(const sPosition& position, uint32_t firstMoveNumber, char* dest);

#endif
