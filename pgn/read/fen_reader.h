// Reads the text of a FEN tag into a position and a first move number.
#ifndef ORVAN_PGN_READ_FEN_READER_H
#define ORVAN_PGN_READ_FEN_READER_H

#include <cstdint>

#include "orvan.h"

// Fills all of `position` from the NUL-terminated `text`, in one pass, field
// by field, tolerant inside a field. A full-move number above 0 sets
// *firstMoveNumber to that number minus 1; otherwise it is left as it is.
// Castling rights and an en passant square that the board contradicts are
// removed without a fault. Returns the number of faults in the structure
// (too few squares, a bad side to move, a bad en passant field, missing
// clocks): 0 for a usable text.
int32_t ReadFen(sPosition* position, uint32_t* firstMoveNumber, const char* text);

#endif
