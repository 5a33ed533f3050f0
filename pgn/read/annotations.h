// What the game loop stores while it walks through movetext: glyphs, comments
// and move tokens with the variation brackets in front of them. All of it is
// indexed by the number of moves stored so far; nothing here looks at a board.
#ifndef ORVAN_PGN_READ_ANNOTATIONS_H
#define ORVAN_PGN_READ_ANNOTATIONS_H

#include <cstdint>

#include "orvan.h"
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

// Stores a move text as a MoveToken, with bit 23 for an opening bracket and
// the count of closing brackets in front of it. Returns 1 when stored, 0 when
// the text is no move or the list is full (the caller keeps its counts).
int32_t PgnStoreMove(PgnReadContext& reader, PgnGame* game, const char* text, int32_t length,
                     uint32_t openCount, uint32_t closeCount);

#endif
