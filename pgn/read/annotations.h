// What the game loop stores while it walks through movetext: glyphs, comments
// and move tokens with the variation brackets in front of them. All of it is
// indexed by the number of moves stored so far; nothing here looks at a board.
#ifndef ORVAN_PGN_READ_ANNOTATIONS_H
#define ORVAN_PGN_READ_ANNOTATIONS_H

#include <cstdint>

#include "frame/diagnostics.h"
#include "orvan.h"
#include "pgn/read/move_token.h"
#include "pgn/read/read_context.h"

// The comment store's last usable offset: a comment must end below it.
inline constexpr uint32_t PgnCommentLimit = PGN_COMMENT_STORE - 1;

// Stores a glyph token ("!", "?!", "$14", ...) as a glyph number of the last
// stored move (index 0 before the first move), two at most per move. A bad
// glyph or a third one is reported to the debug trace and dropped.
void PgnStoreGlyph(PgnReadContext& reader, PgnGame* game, const char* text);

// Reads a comment up to its "}" from the reader's input and stores it for the
// last stored move, white space folded to single blanks. Returns 1 when a
// comment was stored or refused for lack of room, 0 when it was empty.
// Throws PgnEndOfInput (after its trace message) when the input ends inside.
int32_t PgnStoreComment(PgnReadContext& reader, PgnGame* game);

// Marks the MoveToken `word` with bit 23 for an opening bracket and the count
// of closing brackets in front of it, and keeps the bracket depth.
uint32_t PgnMarkBrackets(PgnReadContext& reader, PgnGame* game, uint32_t word, uint32_t openCount,
                         uint32_t closeCount);

// Stores a move text as a MoveToken, with bit 23 for an opening bracket and
// the count of closing brackets in front of it. Returns 1 when stored, 0 when
// the text is no move or the list is full (the caller keeps its counts).
// Inline: it runs for every move of the text.
inline int32_t PgnStoreMove(PgnReadContext& reader, PgnGame* game, const char* text, int32_t length,
                            uint32_t openCount, uint32_t closeCount)
{
    uint32_t word;
    if (!ParseMoveToken(reader.pieceLetters, text, length, &word)) {
        return 0;
    }
    if (openCount != 0 || closeCount != 0) {
        word = PgnMarkBrackets(reader, game, word, openCount, closeCount);
    }
    if (reader.tokenCount >= PGN_MAX_MOVES) {
        DebugTrace("move buffer full, skipping move.");
        return 0;
    }
    reader.tokens[reader.tokenCount++] = word;
    game->commentIndex[reader.tokenCount] = 0;
    game->nags[reader.tokenCount] = 0;
    return 1;
}

#endif
