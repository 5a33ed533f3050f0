// Glyphs and comments of a PgnGame to the moves of a stored game.
#include <cstdio>
#include <cstring>
#include <memory>
#include <new>

#include "frame/diagnostics.h"
#include "pgn/read/game_builder.h"
#include "pgn/read/nag_symbols.h"
#include "siblings/game_driver.h"

namespace {

// Room of the short comment of a move: two glyphs in decimal and the terminator.
constexpr size_t GlyphTextSize = 16;

void AppendGlyph(char* text, size_t size, uint8_t nag)
{
    const size_t used = std::strlen(text);
    for (const NagSymbol& symbol : NagSymbols) {
        if (symbol.nag == nag) {
            std::snprintf(text + used, size - used, "%s", symbol.symbol);
            return;
        }
    }
    std::snprintf(text + used, size - used, "%u", unsigned{nag});
}

// The length of the next line of `rest` (whose length is `length`): the whole
// rest when it fits, else up to the last blank run within the first
// CommentLineLength + 1 characters, else CommentLineLength characters.
size_t NextLineLength(const char* rest, size_t length)
{
    if (length <= CommentLineLength)
        return length;
    size_t blank = CommentLineLength;
    while (blank > 0 && rest[blank] != ' ')
        --blank;
    if (blank == 0)
        return CommentLineLength;
    size_t end = blank;
    while (end > 0 && rest[end - 1] == ' ')
        --end;
    return end > 0 ? end : CommentLineLength;
}

}  // namespace

int32_t PutPgnGlyphs(uint16_t nagWord, uint32_t move)
{
    if (nagWord == 0)
        return 1;
    char text[GlyphTextSize] = "";
    // A zero byte is no glyph; the reader never leaves one in the low byte
    // with a glyph behind it, but a record from elsewhere may.
    for (uint8_t nag : {static_cast<uint8_t>(nagWord & 0xFF), static_cast<uint8_t>(nagWord >> 8)}) {
        if (nag != 0)
            AppendGlyph(text, sizeof text, nag);
    }
    IGMovePutSComment(move, text);
    return 0;
}

int32_t PutPgnComment(const char* text, uint32_t move)
{
    std::unique_ptr<char[]> block(new (std::nothrow) char[CommentBlockSize]);
    if (!block) {
        DebugTrace("cannot allocate memory, comment skipped.");
        return 1;
    }
    size_t used = 0;
    int32_t lines = 0;
    const char* rest = text;
    size_t restLength = std::strlen(rest);
    while (restLength > 0) {
        size_t length = NextLineLength(rest, restLength);
        if (used + length + 2 >= CommentBlockSize) {
            DebugTrace("comment too long, skipped.");
            return 1;
        }
        char* line = block.get() + used;
        std::memcpy(line, rest, length);
        rest += length;
        restLength -= length;
        if (*rest == ' ') {
            while (*rest == ' ') {
                ++rest;
                --restLength;
            }
            if (restLength > 0)
                line[length++] = ' ';
        }
        line[length] = '\0';
        used += length + 1;
        ++lines;
    }
    if (lines > 0)
        IGMovePutLComment(move, block.get(), lines);
    return 0;
}
