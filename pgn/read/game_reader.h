// The steps of the game loop: tags, results, the finish step of a game.
#ifndef ORVAN_PGN_READ_GAME_READER_H
#define ORVAN_PGN_READ_GAME_READER_H

#include <cstddef>
#include <cstdint>

#include "orvan.h"
#include "pgn/pgn_game.h"
#include "pgn/read/pgn_read.h"
#include "pgn/read/read_context.h"

// Tag number 1 to 20 of a tag name of `length` characters, which need not
// be followed by a NUL, compared without regard to case; 0 for a name that
// is not one of PgnTagNames.
int32_t FindPgnTag(const char* name, size_t length);

// Result number 0 to 3 of a movetext token ("*", "1-0", "1:0", "0-1", "1/2",
// ...), or -1. Asked of every movetext token, so kept inline.
inline int32_t PgnResultFromToken(const char* token)
{
    if (token[0] == '*') {
        return PgnResultUnknown;
    }
    if (token[0] != '\0' && (token[1] == '-' || token[1] == ':')) {
        if (token[0] == '1') {
            return PgnResultWhiteWins;
        }
        if (token[2] == '1') {
            return PgnResultBlackWins;
        }
        return PgnResultNone;
    }
    if (token[0] == '1' && token[1] == '/') {
        return PgnResultDraw;
    }
    return PgnResultNone;
}

// Result number of the value of a Result tag, or -1 when it cannot be read.
int32_t PgnResultFromTag(const char* text);

// True when a token can begin movetext: a decimal digit or "." first.
bool StartsMovetext(const char* token);

// Copies at most 255 characters of `value` into the slot of tag `number`
// (1 to 20), padded with NUL to the end of the slot.
void StorePgnTag(PgnGame* game, int32_t number, const char* value);

// Mirrors a position between the colours: ranks 1 and 8 change places and so
// on, each piece changes colour, the side to move and the castling fields of
// the two colours are exchanged, an en passant square is mirrored.
void SwapColours(sPosition* position);

// Finishes a game that the loop has read: settles the result, sets up the
// start position, resolves the moves into the flat tree, and calls the
// callback. Returns 1 when the game was skipped without a callback (empty, or
// a bad FEN), else the callback's result, or 0 without a callback.
int32_t PgnFinishGame(PgnReadContext& reader, PgnGame* game, int32_t hasComment, uint32_t flags,
                      PgnGameCallback callback, intptr_t context);

#endif
