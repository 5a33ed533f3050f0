#include "pgn/read/annotations.h"

#include <cstring>

#include "frame/diagnostics.h"
#include "pgn/read/move_token.h"

namespace {

struct GlyphText {
    const char* text;
    uint16_t number;
};

constexpr GlyphText PgnGlyphTexts[] = {
    {"!", 1}, {"?", 2}, {"!!", 3}, {"??", 4}, {"!?", 5}, {"?!", 6},
};

// The glyph number of a token, or -1 when it is no glyph.
int32_t GlyphNumber(const char* text)
{
    if (text[0] == '$') {
        if (text[1] < '0' || text[1] > '9') {
            return -1;
        }
        int32_t value = 0;
        for (const char* digit = text + 1; *digit >= '0' && *digit <= '9'; ++digit) {
            value = 10 * value + (*digit - '0');
            if (value > 255) {
                return -1;
            }
        }
        return value;
    }
    for (const GlyphText& glyph : PgnGlyphTexts) {
        if (std::strcmp(text, glyph.text) == 0) {
            return glyph.number;
        }
    }
    return -1;
}

}  // namespace

void PgnStoreGlyph(PgnReadContext& reader, PgnGame* game, const char* text)
{
    if (std::strcmp(text, "$") == 0) {
        return;
    }
    int32_t number = GlyphNumber(text);
    if (number < 0) {
        DebugTrace("syntax error in move annotation (NAG) %s.", text);
        return;
    }
    if (number == 0) {
        return;
    }
    uint16_t& entry = game->nags[reader.tokenCount];
    if ((entry & 0xFF) == 0) {
        entry = static_cast<uint16_t>(number);
    } else if ((entry >> 8) == 0) {
        entry = static_cast<uint16_t>(entry | (number << 8));
    } else {
        DebugTrace("up to two NAG comments supported, ignoring %s.", text);
    }
}

int32_t PgnStoreComment(PgnReadContext& reader, PgnGame* game)
{
    char* store = game->commentText;
    uint32_t write = game->commentUsed;
    bool afterBlank = true;
    for (uint8_t c = reader.input.ReadCommentChar(); c != '}'; c = reader.input.ReadCommentChar()) {
        if (c == '\t' || c == '\n' || c == '\r') {
            c = ' ';
        }
        if (c == '\0' || (c == ' ' && afterBlank)) {
            continue;
        }
        afterBlank = c == ' ';
        if (write < PgnCommentLimit) {
            store[write++] = static_cast<char>(c);
        } else {
            // Full: the rest of the comment is read and dropped.
            write = PgnCommentLimit;
        }
    }
    if (write >= PgnCommentLimit) {
        DebugTrace("comment buffer full, move annotation ignored.");
        return 1;
    }
    while (write > game->commentUsed && store[write - 1] == ' ') {
        --write;
    }
    if (write == game->commentUsed) {
        return 0;
    }
    store[write] = '\0';
    game->commentIndex[reader.tokenCount] = game->commentUsed;
    game->commentUsed = write + 1;
    return 1;
}

uint32_t PgnMarkBrackets(PgnReadContext& reader, PgnGame* game, uint32_t word, uint32_t openCount,
                         uint32_t closeCount)
{
    game->treeCount = 1;
    if (openCount > 1) {
        DebugTrace("double brackets no supported ((.");
        openCount = 1;
    }
    reader.bracketDepth += static_cast<int32_t>(openCount) - static_cast<int32_t>(closeCount);
    if (reader.bracketDepth < 0) {
        DebugTrace("unbalanced brackets ()).");
        closeCount = openCount;
    }
    // The close count has eight bits; more closing brackets in front of
    // one move than that end every line anyway.
    if (closeCount > 255) {
        closeCount = 255;
    }
    return word | openCount << 23 | closeCount << MoveTokenBits::CloseCountShift;
}
