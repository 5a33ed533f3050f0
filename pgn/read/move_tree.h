// Plays a game's move tokens from its start position and writes the flat move
// tree of the PgnGame: main line first, each line followed by its sub-lines.
#ifndef ORVAN_PGN_READ_MOVE_TREE_H
#define ORVAN_PGN_READ_MOVE_TREE_H

#include <cstdint>

#include "orvan.h"
#include "pgn/read/read_context.h"

// Plays one line and, by recursion, its sub-lines, writing game->moves from
// `firstEntry` on. The line starts at token `firstToken` in `start` and stops
// by itself at its closing bracket or at `tokenEnd`; alternatives wait on the
// reader's branch stack from level `stackBase` on. `tokenComments` and
// `tokenNags` are the annotation arrays as the reader filled them, by token:
// when they are given, game->commentIndex and game->nags receive the entries
// of each written move; when null, those arrays are left alone. An illegal or
// ambiguous move cuts its line with a report to the debug trace. Returns the
// index behind the last entry written.
uint32_t ResolvePgnMoves(PgnReadContext& reader, PgnGame* game, const uint32_t* tokenComments,
                         const uint16_t* tokenNags, uint32_t firstEntry, int32_t stackBase,
                         const sPosition* start, uint32_t firstToken, uint32_t tokenEnd,
                         int32_t fischer, int32_t swap);

// Writes `position` to the debug trace, rank 8 first, one record per rank.
void DumpBoard(const sPosition* position);

#endif
