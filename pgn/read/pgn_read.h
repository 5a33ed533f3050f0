// Reading PGN games: every game of a file or of a text in memory, one after
// the other, into a PgnGame laid out by the caller, each handed to a callback.
#ifndef ORVAN_PGN_READ_PGN_READ_H
#define ORVAN_PGN_READ_PGN_READ_H

#include <cstdint>
#include <cstdio>

#include "orvan.h"

// Read flags.
enum PgnFlags : uint32_t {
    // Tags only: no result check, no start position and no move work; the
    // callback gets movesRead 0 and a record whose moves, moveCount and
    // position are not set.
    PgnTagsOnly = 1,
    // Colours exchanged: the start position and each move are mirrored; tags
    // and result stay as the text has them.
    PgnSwapColours = 2,
};

// Called once for each finished game. `hasComment` is 1 when a comment of the
// game was stored or refused for lack of room; `movesRead` is 1, or 0 for a
// tags-only read. The record is valid only during the call. A result of 0
// stops the read; anything else goes on with the next game.
using PgnGameCallback = int32_t (*)(PgnGame* game, int32_t hasComment, int32_t movesRead,
                                    intptr_t context);

// Where the text comes from: a file stream (read from where it stands, not
// closed), or, when `file` is null, `size` bytes at `text`. A memory text ends
// at its first NUL; without one the last byte of the block is not read.
struct PgnSource {
    std::FILE* file = nullptr;
    const char* text = nullptr;
    int32_t size = 0;
};

// Reads games from `source` until the input ends or the callback stops it.
// `game` must be laid out with all its stores, its `nags` and `commentIndex`
// from AllocateNagArray and AllocateCommentIndexArray (PgnGameStorage does
// both): the read may replace those two arrays, so the caller frees what the
// record points to at the end. `pieceLetters` gives the letters of knight,
// bishop, rook, queen and king in the text (first five characters; null means
// "NBRQK"). `flags` is a set of PgnFlags. Without a callback the read stops
// behind the first game that is not skipped, and the record keeps that game.
// Nothing in the text is an error: what cannot be placed is skipped and
// reported to the debug trace, and a line is cut at an illegal move.
// Result: 1 when the callback (or the lack of one) stopped the read, else 0;
// 0 too when `game` is null. The read's working state is its own, so reads
// on different threads, each with its own record and source, do not meet.
// That state lives on the calling thread's stack: about 170 KB, and up to
// 240 KB more for a game whose variations nest hundreds of levels deep.
int32_t PgnReadGames(const PgnSource& source, PgnGame* game, uint32_t flags,
                     const char* pieceLetters, PgnGameCallback callback, intptr_t context);

#endif
