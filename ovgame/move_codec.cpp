// Move tokens and the writing of a move tree as tokens.
#include "ovgame/move_codec.h"

namespace ovg {

bool SkipLine(ByteReader& in)
{
    for (int depth = 0; !in.AtEnd();) {
        const uint8_t first = in.Byte();
        if ((first & 0x0F) != TokenEscape)
            continue;
        const uint8_t second = in.Byte();
        if (second == TokenLineStart) {
            ++depth;
        } else if (second == TokenLineEnd) {
            if (depth-- == 0)
                return true;
        } else if (second & 0x80) {
            return false;
        }
    }
    return !in.Failed();
}

bool EncodeTree(const GameBuffer& game, std::vector<uint8_t>& out, std::vector<uint32_t>* order,
                int32_t& mainLength)
{
    struct Frame {
        uint32_t first;
        uint32_t nextAlt;
    };
    // Room for the most a node can take: its token (two bytes) and the start
    // and end of the side line it may begin.
    const size_t start = out.size();
    out.resize(start + 6 * game.nodes.size());
    uint8_t* at = out.data() + start;
    std::vector<Frame> stack;
    if (order != nullptr)
        order->assign(1, 0);
    // Locals, since the byte stores could otherwise alias them.
    const Node* const nodes = game.nodes.data();
    int32_t moves = 0;
    uint32_t current = 0;
    const auto emit = [&](uint32_t node) {
        const MoveToken token = nodes[node].token;
        *at = token.bytes[0];
        at[1] = token.bytes[1];
        at += token.length;
        if (order != nullptr)
            order->push_back(node);
        return token.length != 0;
    };
    const auto mark = [&](uint8_t second) {
        *at++ = TokenEscape;
        *at++ = second;
    };
    // Gives back the room not taken.
    const auto finish = [&](bool complete) {
        out.resize(size_t(at - out.data()));
        mainLength = moves;
        return complete;
    };
    for (;;) {
        // Along the line for as long as its moves have no alternatives.
        const bool mainLine = stack.empty();
        uint32_t first = nodes[current].next;
        for (; first != 0; first = nodes[current].next) {
            if (!emit(first))
                return finish(false);
            moves += mainLine;
            if (nodes[first].alt != 0)
                break;
            current = first;
        }
        if (first != 0) {
            stack.push_back(Frame{first, nodes[first].alt});
        } else {
            if (stack.empty())
                break;
            mark(TokenLineEnd);
        }
        Frame& frame = stack.back();
        if (frame.nextAlt != 0) {
            const uint32_t alt = frame.nextAlt;
            frame.nextAlt = nodes[alt].alt;
            mark(TokenLineStart);
            if (!emit(alt))
                return finish(false);
            current = alt;
        } else {
            current = frame.first;
            stack.pop_back();
        }
    }
    return finish(true);
}

}  // namespace ovg
