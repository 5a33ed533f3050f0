// Fills a PgnGame from a game in a game buffer: the header as tags, the move
// tree flattened into the record's move array, long comments joined into the
// comment store, short comments read as glyph numbers.
#ifndef ORVAN_PGN_WRITE_GAME_TO_PGN_H
#define ORVAN_PGN_WRITE_GAME_TO_PGN_H

#include <cstddef>
#include <cstdint>

#include "orvan.h"

// An alternative waiting to be walked, with the position before its first
// move and the entry that carries the MoveBranch mark for it.
struct PendingLine {
    uint32_t node;
    sPosition position;
    uint32_t markedEntry;
};

// Room of the stack of pending alternatives: a game that holds this many at
// one time is refused.
inline constexpr int32_t PendingLineCount = 750;

// Fills `pgn` (all pointers set) from `game`, which stands on its initial
// position; `stack` has room for PendingLineCount entries. The nags and
// commentIndex entries past the game's last move are left as they were.
// Each move is tested with the library's own move logic: an illegal move is
// replaced by its first alternative when it has one, else its line ends
// before it, with a trace message. Returns 1 when the record is complete (possibly cut),
// 0 when the game has 10000 entries or PendingLineCount alternatives pending,
// or the buffer is not open; the record is then unusable.
int32_t GameToPgnGame(OvGameBuffer game, PgnGame* pgn, PendingLine* stack);

// The tag slots and resultToken from the header of `game`.
void HeaderToTags(PgnGame* pgn, OvGameBuffer game);

// "hh:mm:00" of a time in minutes, into TimeTagSize characters.
void MinutesToTimeTag(int32_t minutes, char* dest);

// Joins the lines of a long comment block (a 16-bit count, then terminated
// lines, `blockSize` bytes at most) into the comment store as the comment of
// annotation entry `index`: a line end inside a word vanishes, one behind a
// word becomes one blank, leading blanks of each line and of the whole go.
// Returns 1 when stored; 0 when nothing was left or the store is full (with a
// trace message), and commentIndex[index] is then unchanged.
int32_t StoreLongComment(PgnGame* pgn, uint32_t index, const char* block, size_t blockSize);

// Adds the glyph numbers of a short comment ("$14", "!?", "!14", store glyph
// codes) to nags[index], two at most; items that cannot be read are dropped
// with a trace message.
void StoreShortComment(PgnGame* pgn, uint32_t index, const char* text);

// 1 when the move at `moveIndex` of the move array is Black's, by the parity
// of the index from the start position's side to move.
int32_t MoverIsBlack(const sPosition& start, uint32_t moveIndex);

#endif
