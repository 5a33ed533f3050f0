// Text and result comparisons of header matching. The query side is folded
// already; each byte of the game's side goes through HeaderFoldTable.
#include "search/header_match.h"

namespace {

constexpr uint8_t NoMatchByte = 0xB0;

constexpr CodePageTable MakeHeaderFoldTable()
{
    CodePageTable table{};
    for (int byte = 0; byte < 256; ++byte) {
        uint8_t folded = static_cast<uint8_t>(byte);
        if ((byte >= 0x01 && byte <= 0x1F) || (byte >= 0x7F && byte <= 0x90) || (byte >= 0x93 && byte <= 0x9F))
            folded = NoMatchByte;
        else if (byte >= 'A' && byte <= 'Z')
            folded = static_cast<uint8_t>(byte + 0x20);
        table[byte] = folded;
    }
    return table;
}

// Steps while the query goes on and its byte equals the folded game byte;
// returns the index where the walk stopped.
size_t CommonLength(const char* query, const char* text)
{
    size_t index = 0;
    while (query[index] != '\0' && static_cast<uint8_t>(query[index]) == HeaderFoldTable[static_cast<uint8_t>(text[index])])
        ++index;
    return index;
}

}  // namespace

constexpr CodePageTable HeaderFoldTable = MakeHeaderFoldTable();

int32_t TextEquals(const char* query, const char* text)
{
    const size_t index = CommonLength(query, text);
    return query[index] == '\0' && text[index] == '\0' ? 1 : 0;
}

int32_t TextBeginsWith(const char* query, const char* text)
{
    return query[CommonLength(query, text)] == '\0' ? 1 : 0;
}

int32_t TextContains(const char* query, const char* text)
{
    for (const char* start = text; *start != '\0'; ++start) {
        const size_t index = CommonLength(query, start);
        if (query[index] == '\0')
            return 1;
        if (start[index] == '\0')
            return 0;  // the game's text ended first: no later start can fit
    }
    return 0;
}

int32_t ResultMatches(int32_t query, int32_t game)
{
    if (query == game)
        return 1;
    return query == 0 && (game < 1 || game > 3) ? 1 : 0;
}
