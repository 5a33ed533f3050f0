// Turns the bytes of a PgnInput into PGN tokens, one at a time.
#ifndef ORVAN_PGN_READ_PGN_SCANNER_H
#define ORVAN_PGN_READ_PGN_SCANNER_H

#include <cstdint>

#include "pgn/read/pgn_input.h"

// Room for one token: at most 255 characters and a NUL.
inline constexpr int PgnTokenSize = 256;
inline constexpr int PgnMaxTokenLength = PgnTokenSize - 1;

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

// Blanks and line ends.
inline constexpr uint8_t PgnWhiteSpace = PgnBlank | PgnLineEnd;

inline bool HasPgnClass(uint8_t c, uint8_t bits)
{
    return (PgnCharClass.bits[c] & bits) != 0;
}

// A quoted string that closes inside the buffered block ending at `limit`,
// with no backslash or line end and fewer than 255 characters, read straight
// from the block; `quote` stands on its opening quote. Puts the value, with
// the blanks taken off both ends, into `token` (PgnTokenSize characters) and
// its length into *length, and returns where the string ends behind its
// closing quote. Returns null for any other string, `token` then undefined.
const uint8_t* PgnScanBlockString(const uint8_t* quote, const uint8_t* limit, char* token, int32_t* length);

// PgnNextToken for any token; the inline part below takes the common ones.
int32_t PgnScanInGeneral(PgnInput& input, char* token, int32_t* isString);

// Where an ordinary token that starts at `first`, inside the buffered block
// that ends at `limit`, ends: at the stop character or the white space behind
// it. Null when the token needs the general scan: it reaches the end of the
// block or its 255th character, or white space follows a hyphen and the token
// goes on behind it.
inline const uint8_t* PgnOrdinaryTokenEnd(const uint8_t* first, const uint8_t* limit)
{
    const uint8_t* end = limit - first > PgnMaxTokenLength ? first + PgnMaxTokenLength : limit;
    const uint8_t* next = first;
    do {
        ++next;
    } while (next != end && !HasPgnClass(*next, PgnWhiteSpace | PgnStop));
    if (next == end || (next[-1] == '-' && HasPgnClass(*next, PgnWhiteSpace))) {
        return nullptr;
    }
    return next;
}

// The common tokens, a single or an ordinary token that ends inside the
// buffered block, read straight from the block. Returns the length, or 0 when
// the token needs the general scan, with white space passed over.
inline int32_t PgnScanShortToken(PgnInput& source, char* token)
{
    const uint8_t* next = source.Next();
    const uint8_t* limit = source.Limit();
    while (next != limit && HasPgnClass(*next, PgnWhiteSpace)) {
        ++next;
    }
    source.Take(next);
    if (next == limit) {
        return 0;
    }
    uint8_t c = *next;
    if (HasPgnClass(c, PgnSingle)) {
        token[0] = static_cast<char>(c);
        token[1] = '\0';
        source.Take(next + 1);
        return 1;
    }
    // Quotes and glyph starts are stop characters.
    if (HasPgnClass(c, PgnStop) || c == '%') {
        return 0;
    }
    const uint8_t* end = PgnOrdinaryTokenEnd(next, limit);
    if (end == nullptr) {
        return 0;
    }
    int32_t length = static_cast<int32_t>(end - next);
    for (int32_t i = 0; i < length; ++i) {
        token[i] = static_cast<char>(next[i]);
    }
    token[length] = '\0';
    // White space behind the token is read with it, a stop character left.
    source.Take(HasPgnClass(*end, PgnWhiteSpace) ? end + 1 : end);
    return length;
}

// Reads the next token into `token` (PgnTokenSize characters) and returns its
// length. `isString` becomes 1 when the token is the value of a quoted string
// (then the length is of no use), else 0. Blanks, line ends and lines that
// start with "%" are passed over; tokens longer than 255 characters are cut.
// Throws PgnEndOfInput when the input runs out, dropping a half-read token.
// Inline: the common tokens take no call.
inline int32_t PgnNextToken(PgnInput& input, char* token, int32_t* isString)
{
    *isString = 0;
    if (int32_t length = PgnScanShortToken(input, token)) {
        return length;
    }
    return PgnScanInGeneral(input, token, isString);
}

#endif
