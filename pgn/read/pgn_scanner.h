// Turns the bytes of a PgnInput into PGN tokens, one at a time.
#ifndef ORVAN_PGN_READ_PGN_SCANNER_H
#define ORVAN_PGN_READ_PGN_SCANNER_H

#include <cstdint>

#include "pgn/read/pgn_input.h"

// Room for one token: at most 255 characters and a NUL.
inline constexpr int PgnTokenSize = 256;

// Character classes of the scanner, as bits of PgnCharClass.
enum : uint8_t {
    PgnBlank = 1,        // space, tab, vertical tab
    PgnLineEnd = 2,      // LF, CR
    PgnSingle = 4,       // a token of one character
    PgnGlyphStart = 8,   // ! ? $
    PgnStop = 16,        // ends an ordinary token and is put back
    PgnGlyphChar = 32,   // ! ? $ and decimal digits
    PgnBracket = 64,     // [ ] { } ( ) < ; which the game loop looks at first
};

inline constexpr auto PgnCharClass = [] {
    struct Table {
        uint8_t bits[256]{};
    } table;
    auto mark = [&](const char* chars, uint8_t bit) {
        for (; *chars != '\0'; ++chars) {
            table.bits[static_cast<uint8_t>(*chars)] |= bit;
        }
    };
    mark(" \t\v", PgnBlank);
    mark("\n\r", PgnLineEnd);
    mark(";{(<.*[]>})", PgnSingle);
    mark("!?$", PgnGlyphStart);
    mark("\".*[]<>{}()!?$", PgnStop);
    mark("!?$0123456789", PgnGlyphChar);
    mark("[]{}()<;", PgnBracket);
    return table;
}();

inline bool HasPgnClass(uint8_t c, uint8_t bits)
{
    return (PgnCharClass.bits[c] & bits) != 0;
}

// Reads the next token into `token` (PgnTokenSize characters) and returns its
// length. `isString` becomes 1 when the token is the value of a quoted string
// (then the length is of no use), else 0. Blanks, line ends and lines that
// start with "%" are passed over; tokens longer than 255 characters are cut.
// Throws PgnEndOfInput when the input runs out, dropping a half-read token.
int32_t PgnNextToken(PgnInput& input, char* token, int32_t* isString);

#endif
