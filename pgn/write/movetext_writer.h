// Writing the flat move tree of a PgnGame as movetext: numbered moves, glyphs,
// comments and nested variations, broken into lines by PgnPutToken.
#ifndef ORVAN_PGN_WRITE_MOVETEXT_WRITER_H
#define ORVAN_PGN_WRITE_MOVETEXT_WRITER_H

#include <cstdint>
#include <string_view>

#include "orvan.h"
#include "pgn/write/pgn_sink.h"

// Bits of the `mode` of PgnWriteLine above its low byte, which is the text
// mode of the move texts.
inline constexpr uint32_t LineOpenPending = 0x20000000;  // the next number opens with "("
inline constexpr uint32_t LineIsVariation = 0x40000000;  // the line closes with ")"
inline constexpr uint32_t LineTextModeMask = 0xFF;

// Writes the line of the move tree `moves` that starts at entry `first`, from
// `position` (copied; the caller's record does not change), with everything
// that hangs on it: per move its number, the move text (OvGetMoveInfo and
// OvMoveToText with the text mode in the low byte of `mode` and `table`), its
// glyphs, its comment and the variations that are alternatives to it, each
// through a nested call. `ply` is the ply of the line's first move: 0 is
// White's first move, odd plies are Black moves. `end` is one behind the last
// entry of the tree. `nags`, `commentIndex` and `commentText` are indexed as in
// PgnGame; either of nags and commentIndex may be null, which leaves out the
// glyphs or the comments. Starting at entry 0, the glyphs and comment of index
// 0 come first; those of a move are written once, behind it, also when the
// next move's full number follows them. Returns the new column. A tree whose alternatives run past
// `end` brings up "Move tree corrupt." through InternalErrorBox; the line
// that finds it stops there, without its closing bracket, and gives column 0.
int32_t PgnWriteLine(PgnSink& sink, const sPosition& position, uint32_t ply,
                     const PackedMove* moves, uint32_t first, uint32_t end,
                     const uint32_t* commentIndex, const char* commentText, const uint16_t* nags,
                     int32_t column, int32_t width, uint32_t mode, const NotationTable* table);

// Writes the glyph in the low byte of `nagWord` as "$n" and, when not 0, the
// one in the high byte as a second token. Returns the new column.
int32_t PgnWriteNags(PgnSink& sink, int32_t column, int32_t width, uint16_t nagWord);

// Writes `text` in braces, word by word: the words (runs of characters other
// than the blank) are separated by one blank or a line feed, the first sticks
// to "{" and the last to "}" unless they do not fit. Returns the new column.
int32_t PgnWriteComment(PgnSink& sink, int32_t column, int32_t width, std::string_view text);

#endif
