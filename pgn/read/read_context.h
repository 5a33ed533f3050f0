// The working state of one PGN read: everything the reader's steps share.
// Each read owns one, so reads on different threads do not meet.
#ifndef ORVAN_PGN_READ_READ_CONTEXT_H
#define ORVAN_PGN_READ_READ_CONTEXT_H

#include <cstdint>

#include "orvan.h"
#include "pgn/read/move_token.h"
#include "pgn/read/pgn_input.h"

// Room for pending alternatives while a game's moves are resolved.
inline constexpr int PgnBranchStackSize = 750;

// An alternative waiting to be resolved after the line it branches from.
struct PgnBranch {
    uint32_t parentIndex;     // index in moves of the move it replaces
    uint32_t firstToken;      // index in the token list of its first move
    sPosition startPosition;  // the position before the replaced move
};

struct PgnReadContext {
    // Reads `file`, or when it is null `size` bytes at `text` (see PgnInput).
    PgnReadContext(std::FILE* file, const char* text, int32_t size) : input(file, text, size) {}

    PgnPieceLetters pieceLetters;
    // Move tokens of the current game, variations included, in text order.
    uint32_t tokenCount = 0;
    // Open variation brackets; negative after unbalanced closing brackets.
    int32_t bracketDepth = 0;
    uint32_t tokens[PGN_MAX_MOVES];
    PgnBranch branchStack[PgnBranchStackSize];
    PgnInput input;
};

#endif
