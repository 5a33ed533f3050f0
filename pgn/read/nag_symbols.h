// The text symbols of a glyph in a stored game's short comment, longer ones
// first, so that a reader that tries them in order takes "!?" before "!".
#ifndef ORVAN_PGN_READ_NAG_SYMBOLS_H
#define ORVAN_PGN_READ_NAG_SYMBOLS_H

#include <array>
#include <cstdint>

struct NagSymbol {
    const char* symbol;
    uint8_t nag;
};

inline constexpr std::array<NagSymbol, 9> NagSymbols = {{
    {"!!", 3}, {"??", 4}, {"!?", 5}, {"?!", 6}, {"+-", 18}, {"-+", 19},
    {"!", 1}, {"?", 2}, {"=", 11},
}};

#endif
