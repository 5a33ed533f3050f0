// Turns a finished PgnGame into a game in a game buffer of the store: the
// header, the set-up position, and every move played through the store's own
// legality test, with side lines, glyphs and comments.
#ifndef ORVAN_PGN_READ_GAME_BUILDER_H
#define ORVAN_PGN_READ_GAME_BUILDER_H

#include <cstdint>

#include "orvan.h"
#include "siblings/driver_records.h"

// Pending branches of one build. A branch that finds the stack full is not
// pushed: its side lines are left out with a trace message, the rest of the
// game is built.
inline constexpr int BuilderBranchStackSize = 512;

// Erases `game` and builds `pgn` into it. A move the store refuses ends its
// line with a trace message; the other lines are still built. Returns 0, or 1
// when the tree is corrupt (an alternative lies beyond its end), after the
// box "Move tree corrupt."; the game then stays as far as it was built. The
// buffer is left at the end of the line built last.
int32_t BuildPgnGame(const PgnGame& pgn, OvGameBuffer game);

// The eleven text fields through OvPutHeaderInfo (empty ones too), times,
// Elo values and round when their tags are set, the date always, and the
// result unless the record has none.
void PutPgnHeader(const PgnGame& pgn, OvGameBuffer game);

// Makes `position` the game's initial position; `firstMoveNumber` is the
// full-move number minus 1.
void PutPgnStartPosition(const sPosition& position, uint32_t firstMoveNumber, OvGameBuffer game);

// A time tag in minutes: 60 x the number at the start plus the next number
// behind it ("1:30" is 90, "2" is 120).
int32_t PgnTimeToMinutes(const char* text);

// The store's form of a move: files and ranks 1 to 8, no promotion piece.
MoveXY MoveXYFromPacked(uint32_t move);

// Writes the glyphs of one nags entry as a short comment: each as its symbol
// when it has one, else in decimal, joined without a separator ("!14").
// Returns 1 for an empty word (nothing written), else 0.
int32_t PutPgnGlyphs(uint16_t nagWord, uint32_t move);

// Longest text of a long comment line: a longer comment is cut at blanks.
inline constexpr int32_t CommentLineLength = 30;
// Room of all lines of one comment, terminators included.
inline constexpr int32_t CommentBlockSize = 2880;

// Writes a comment as long comment lines of at most CommentLineLength
// characters, cut at blanks; a line that ends at a blank keeps one. Returns
// 0, or 1 when it was skipped (no memory, or the lines exceed the block),
// with a trace message.
int32_t PutPgnComment(const char* text, uint32_t move);

#endif
