// Long and short comments of a stored game into the comment store and the
// glyph entries of a PgnGame.
#include <array>
#include <cstring>

#include "frame/diagnostics.h"
#include "pgn/read/nag_symbols.h"
#include "pgn/write/game_to_pgn.h"

namespace {

// The last offset of the comment store a comment may reach.
constexpr uint32_t CommentStoreLimit = PGN_COMMENT_STORE - 1;

// Glyph numbers of the single-byte glyph codes B1 to D0 of short comments,
// for a move by White and by Black; 0 where no number exists.
struct GlyphCode {
    uint8_t white;
    uint8_t black;
};
constexpr uint8_t FirstGlyphCode = 0xB1;
constexpr uint8_t LastGlyphCode = 0xD0;

constexpr std::array<GlyphCode, LastGlyphCode - FirstGlyphCode + 1> NagGlyphCodes = [] {
    std::array<GlyphCode, LastGlyphCode - FirstGlyphCode + 1> table{};
    struct Row {
        uint8_t code;
        GlyphCode numbers;
    };
    constexpr Row rows[] = {
        {0xB7, {14, 14}},   {0xB8, {15, 15}}, {0xB9, {16, 16}}, {0xBA, {17, 17}},
        {0xBB, {44, 45}},   {0xBC, {13, 13}}, {0xBF, {7, 7}},   {0xC1, {40, 41}},
        {0xC2, {36, 37}},   {0xC3, {32, 33}}, {0xC4, {132, 133}}, {0xC5, {56, 57}},
        {0xC6, {62, 63}},   {0xC7, {26, 27}}, {0xC8, {50, 51}}, {0xCA, {138, 139}},
        {0xCD, {22, 23}},
    };
    for (const Row& row : rows)
        table[row.code - FirstGlyphCode] = row.numbers;
    return table;
}();

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

void AddNag(uint16_t& entry, uint32_t nag)
{
    if ((entry & 0xFF) == 0)
        entry = static_cast<uint16_t>(entry | nag);
    else if ((entry >> 8) == 0)
        entry = static_cast<uint16_t>(entry | nag << 8);
    else
        DebugTrace("up to two NAG comments supported, ignoring $%d.", static_cast<int>(nag));
}

// The symbol of NagSymbols at `text`, or null.
const NagSymbol* SymbolAt(const char* text)
{
    for (const NagSymbol& symbol : NagSymbols) {
        if (std::strncmp(text, symbol.symbol, std::strlen(symbol.symbol)) == 0)
            return &symbol;
    }
    return nullptr;
}

void TrimTrailingBlanks(const char* store, uint32_t start, uint32_t& at)
{
    while (at > start && store[at - 1] == ' ')
        --at;
}

}  // namespace

int32_t StoreLongComment(PgnGame* pgn, uint32_t index, const char* block, size_t blockSize)
{
    if (blockSize < sizeof(uint16_t))
        return 0;
    uint16_t count = 0;
    std::memcpy(&count, block, sizeof count);
    const char* line = block + sizeof count;
    const char* blockEnd = block + blockSize;

    char* store = pgn->commentText;
    const uint32_t start = pgn->commentUsed;
    uint32_t at = start;
    for (uint32_t n = 0; n < count && line < blockEnd; ++n) {
        const char* lineEnd = line + strnlen(line, static_cast<size_t>(blockEnd - line));
        const char* from = line;
        while (from < lineEnd && *from == ' ')
            ++from;
        while (from < lineEnd && at < CommentStoreLimit)
            store[at++] = *from++;
        TrimTrailingBlanks(store, start, at);
        if (lineEnd > line && lineEnd[-1] == ' ' && at < CommentStoreLimit)
            store[at++] = ' ';
        line = lineEnd + 1;
    }
    TrimTrailingBlanks(store, start, at);
    if (at >= CommentStoreLimit) {
        DebugTrace("comment buffer full, move annotation ignored.");
        return 0;
    }
    store[at] = '\0';
    if (at == start)
        return 0;
    pgn->commentIndex[index] = start;
    pgn->commentUsed = at + 1;
    return 1;
}

void StoreShortComment(PgnGame* pgn, uint32_t index, const char* text)
{
    const char* at = text;
    if (*at == '$')
        ++at;
    while (*at != '\0') {
        if (IsDigit(*at)) {
            const char* digits = at;
            uint32_t value = 0;
            for (; IsDigit(*at); ++at)
                value = value > 255 ? value : value * 10 + static_cast<uint32_t>(*at - '0');
            if (value > 255) {
                DebugTrace("syntax error in NAG comment %s, value out of range.", at);
                continue;
            }
            if (value != 0) {
                AddNag(pgn->nags[index], value);
                continue;
            }
            at = digits;  // a 0 is no number: its characters are read one by one
        }
        if (const NagSymbol* symbol = SymbolAt(at)) {
            AddNag(pgn->nags[index], symbol->nag);
            at += std::strlen(symbol->symbol);
            continue;
        }
        const auto code = static_cast<uint8_t>(*at);
        if (*at == '#' || *at == '@') {
            // dropped without a word
        } else if (code >= FirstGlyphCode && code <= LastGlyphCode) {
            const GlyphCode& numbers = NagGlyphCodes[code - FirstGlyphCode];
            const uint8_t nag = MoverIsBlack(*pgn->position, index - 1) ? numbers.black : numbers.white;
            if (nag != 0)
                AddNag(pgn->nags[index], nag);
            else
                DebugTrace("no conversion exists for NAG comment %s.", at);
        } else {
            DebugTrace("syntax error in NAG comment %s, unknown character(s).", at);
        }
        ++at;
    }
}
