// The form in which the key database stores and compares positions: the 64
// squares of a BoardRecord, the side to move, the castling flags and an en
// passant file only when a pawn can use it, so that two boards of the same
// position compare equal whatever the driver keeps in its border and extras.
#ifndef ORVAN_OVKEY_KEY_POSITION_H
#define ORVAN_OVKEY_KEY_POSITION_H

#include <array>
#include <cstdint>

#include "siblings/driver_records.h"

namespace ovkey {

// Bytes 0-63 squares a1, b1, ..., h8 in driver codes; 64 side (1 black, 0
// white); 65 castling flags; 66 usable en passant file (1-8) or 0.
using KeyPosition = std::array<uint8_t, 67>;

KeyPosition KeyPositionOf(const BoardRecord& board);

// The en passant file of `board` (1-8) when the side to move has a pawn
// beside the pawn that has just made its double step, else 0.
uint8_t UsableEpFile(const BoardRecord& board);

// Writes the position into `board`, which keeps everything else it holds (its
// border, its reserved part); `ply` is the half-moves played before it.
void PutKeyPosition(const KeyPosition& position, int32_t plies, BoardRecord& board);

}  // namespace ovkey

#endif
