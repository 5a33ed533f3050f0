// The driver's comment calls: long comments as lines, short comments (glyph
// text) as one text per move.
#include <cstring>

#include "ovgame/game_buffer.h"
#include "siblings/game_driver.h"

using namespace ovg;

namespace {

constexpr size_t MaxLongComment = 60000;

}  // namespace

int32_t IGMovePutLComment(uint32_t move, const char* lines, int32_t count)
{
    uint32_t node = 0;
    GameBuffer* g = FindMove(move, node);
    if (g == nullptr || count < 0 || (count > 0 && lines == nullptr) || count > 65535)
        return 0;
    size_t size = 0;
    for (int32_t i = 0; i < count; ++i) {
        const size_t length = strnlen(lines + size, MaxLongComment + 1 - size);
        size += length + 1;
        if (size > MaxLongComment)
            return 0;
    }
    Node& n = g->nodes[node];
    if (count == 0) {
        n.longComment = 0;
        return 1;
    }
    LongComment comment{std::string(lines, size), uint16_t(count)};
    if (n.longComment != 0) {
        g->longComments[n.longComment - 1] = std::move(comment);
    } else {
        g->longComments.push_back(std::move(comment));
        n.longComment = uint32_t(g->longComments.size());
    }
    return 1;
}

int32_t GetLComment(uint32_t move, void* block)
{
    if (block == nullptr)
        return 0;
    auto* out = static_cast<char*>(block);
    uint16_t count = 0;
    uint32_t node = 0;
    GameBuffer* g = FindMove(move, node);
    if (g != nullptr && g->nodes[node].longComment != 0) {
        const LongComment& comment = g->longComments[g->nodes[node].longComment - 1];
        size_t used = 2;
        size_t at = 0;
        for (uint16_t i = 0; i < comment.count; ++i) {
            const size_t length = std::strlen(comment.lines.c_str() + at) + 1;
            if (used + length > size_t(OvgLongCommentBlockSize))
                break;
            std::memcpy(out + used, comment.lines.data() + at, length);
            used += length;
            at += length;
            ++count;
        }
    }
    std::memcpy(out, &count, sizeof count);
    return count;
}

int32_t IGMovePutSComment(uint32_t move, const char* text)
{
    uint32_t node = 0;
    GameBuffer* g = FindMove(move, node);
    if (g == nullptr)
        return 0;
    Node& n = g->nodes[node];
    const size_t length = text == nullptr ? 0 : strnlen(text, MaxTextLength);
    if (length == 0) {
        n.shortComment = 0;
        return 1;
    }
    if (n.shortComment != 0) {
        g->shortComments[n.shortComment - 1].assign(text, length);
    } else {
        g->shortComments.emplace_back(text, length);
        n.shortComment = uint32_t(g->shortComments.size());
    }
    return 1;
}

int32_t IGMoveGetSComment(uint32_t move, char* text)
{
    if (text == nullptr)
        return 0;
    text[0] = '\0';
    uint32_t node = 0;
    GameBuffer* g = FindMove(move, node);
    if (g == nullptr || g->nodes[node].shortComment == 0)
        return 0;
    const std::string& comment = g->shortComments[g->nodes[node].shortComment - 1];
    std::memcpy(text, comment.c_str(), comment.size() + 1);
    return 1;
}
