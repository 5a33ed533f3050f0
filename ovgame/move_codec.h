// Move tokens and the walk of a move tree as a token stream (see
// game_record.h for the form).
#ifndef OVGAME_MOVE_CODEC_H
#define OVGAME_MOVE_CODEC_H

#include <bit>
#include <cstdint>
#include <vector>

#include "ovgame/board_rules.h"
#include "ovgame/byte_stream.h"
#include "ovgame/game_buffer.h"
#include "ovgame/position_signature.h"

namespace ovg {

constexpr uint8_t TokenEscape = 0x0F;     // low nibble of a first byte: a second byte follows
constexpr uint8_t TokenLineEnd = 0x80;    // second byte: the side line ends
constexpr uint8_t TokenLineStart = 0x81;  // second byte: a side line begins

// Writes the move from `from` to `to` (with `promotion` for a pawn reaching
// the last rank) in `pos`; false when the mover's rank or destination has no
// code (more than 16 men of a side).
bool WriteMove(ByteWriter& out, const Position& pos, int from, int to, Kind promotion);

// The tree of `game` as tokens. `order` receives the nodes in the order of
// their tokens (the root first), `signature` takes in every position.
bool EncodeTree(const GameBuffer& game, std::vector<uint8_t>& out, std::vector<uint32_t>& order,
                GameSignature& signature);

// Reads one move token of `pos` (the first byte already read as `first`).
// False for a damaged token.
bool ReadMove(ByteReader& in, uint8_t first, const Position& pos, int& from, int& to, Kind& promotion);

// Replays a token stream from `initial`, calling visit(parentOrdinal, from, to,
// promotion, positionAfter) for each move in stream order (ordinal 0 is the
// root; each move gets the next ordinal). A visit result of false stops the
// walk. Result: 1 walked to the end, 0 stopped, -1 damaged stream.
template <class Visit>
int DecodeTree(ByteReader in, const Position& initial, Visit&& visit)
{
    struct Frame {
        uint32_t parent;
        uint32_t first;
        Position before;
        Position after;
    };
    std::vector<Frame> stack;
    uint32_t ordinal = 0;
    uint32_t current = 0;
    Position pos = initial;
    // Reads one move after `parent` in `before`; the new ordinal and position.
    const auto readMove = [&](uint8_t first, uint32_t parent, const Position& before, Position& after) -> int {
        int from = 0, to = 0;
        Kind promotion = NoKind;
        if (!ReadMove(in, first, before, from, to, promotion))
            return -1;
        after = before;
        MakeMove(after, from, to, promotion);
        ++ordinal;
        return visit(parent, from, to, promotion, after) ? 1 : 0;
    };
    for (;;) {
        bool lineEnds = in.AtEnd();
        uint8_t first = 0;
        if (!lineEnds) {
            first = in.Byte();
            if ((first & 0x0F) == TokenEscape && (in.Peek() & 0x80)) {
                const uint8_t special = in.Byte();
                if (special != TokenLineEnd || first != TokenEscape)
                    return -1;
                lineEnds = true;
            }
        }
        if (lineEnds) {
            if (stack.empty())
                return in.AtEnd() ? 1 : -1;
            // Back at a branch: further alternatives, or the main continuation.
            Frame& frame = stack.back();
            if (in.Peek() == TokenEscape && !in.AtEnd()) {
                ByteReader probe = in;
                probe.Byte();
                if (probe.Byte() == TokenLineStart) {
                    in = probe;
                    if (in.AtEnd())
                        return -1;
                    const int r = readMove(in.Byte(), frame.parent, frame.before, pos);
                    if (r <= 0)
                        return r;
                    current = ordinal;
                    continue;
                }
            }
            current = frame.first;
            pos = frame.after;
            stack.pop_back();
            continue;
        }
        Position after;
        const int r = readMove(first, current, pos, after);
        if (r <= 0)
            return r;
        const uint32_t mainChild = ordinal;
        ByteReader probe = in;
        if (probe.Byte() == TokenEscape && probe.Byte() == TokenLineStart) {
            in = probe;
            stack.push_back(Frame{current, mainChild, pos, after});
            if (in.AtEnd())
                return -1;
            const int s = readMove(in.Byte(), current, stack.back().before, pos);
            if (s <= 0)
                return s;
            current = ordinal;
            continue;
        }
        current = mainChild;
        pos = after;
    }
}

}  // namespace ovg

#endif
