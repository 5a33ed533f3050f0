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

// The token of a move from `from` in `pos`, `place` being the place of its
// destination among the targets of the man (see LegalTargetPlace) and
// `promotion` the kind a pawn becomes on the last rank, NoKind for any other
// move; length 0 when the mover's rank has no code (more than 16 men of a side).
inline MoveToken TokenOf(const Position& pos, int from, int place, Kind promotion)
{
    MoveToken token;
    const uint64_t own = pos.occupied[pos.side];
    if (((own >> from) & 1) == 0)
        return token;
    const int rank = CountBits(own & ((uint64_t{1} << from) - 1));
    if (rank > 15)
        return token;
    // The underpromotions to rook, bishop and knight as 1 to 3.
    const uint8_t promo = promotion >= Knight && promotion < Queen ? uint8_t(Queen - promotion) : 0;
    if (place < 15 && promo == 0) {
        token.bytes[0] = uint8_t(rank << 4 | place);
        token.length = 1;
    } else {
        token.bytes[0] = uint8_t(rank << 4 | TokenEscape);
        token.bytes[1] = uint8_t(place | promo << 5);
        token.length = 2;
    }
    return token;
}

// The tree of `game` as its nodes' tokens; `order` (when not null) receives
// the nodes in the order of their tokens (the root first), `mainLength` the
// moves of the main line. False when a move has no token.
bool EncodeTree(const GameBuffer& game, std::vector<uint8_t>& out, std::vector<uint32_t>* order,
                int32_t& mainLength);

// The kinds of the promotion codes of a token.
inline constexpr Kind PromotionKinds[4] = {Queen, Rook, Bishop, Knight};

// Reads one move token of `pos` (the first byte already read as `first`).
// False for a damaged token. Inline in the walk of a tree, which reads every
// move of a game this way.
inline bool ReadMove(ByteReader& in, uint8_t first, const Position& pos, int& from, int& to, Kind& promotion)
{
    int place = first & 0x0F;
    int promo = 0;
    if (place == TokenEscape) {
        const uint8_t second = in.Byte();
        if (in.Failed() || (second & 0x80))
            return false;
        place = second & 31;
        promo = (second >> 5) & 3;
    }
    uint64_t men = pos.occupied[pos.side];
    for (int rank = first >> 4; rank > 0 && men != 0; --rank)
        men &= men - 1;
    if (men == 0)
        return false;
    from = std::countr_zero(men);
    to = TargetAt(pos, from, place);
    if (to < 0)
        return false;
    promotion = IsPromotion(pos, from, to) ? PromotionKinds[promo] : NoKind;
    return true;
}

// What a visitor of DecodeTree asks for after a move.
enum class WalkAnswer { Go, SkipLine, Stop };

// Skips the tokens of the rest of a line, through its end token (or to the
// end of the stream for the main line). False for a damaged stream.
bool SkipLine(ByteReader& in);

// Replays a token stream from `initial`, calling visit(parentOrdinal, move,
// positionAfter) for each move in stream order (the move's from, to,
// promotion and token set; ordinal 0 is the root, each move gets the next
// ordinal). The visit answers WalkAnswer::Go, WalkAnswer::SkipLine to leave out the rest
// of the move's line (its side lines from earlier moves are still walked), or
// WalkAnswer::Stop. Result: 1 walked to the end, 0 stopped, -1 damaged stream.
template <class Visit>
int DecodeTree(ByteReader in, const Position& initial, Visit&& visit)
{
    struct Frame {
        uint32_t parent;
        uint32_t first;
        Position before;
        Position after;
        bool skipAfter;
    };
    std::vector<Frame> stack;
    uint32_t ordinal = 0;
    uint32_t current = 0;
    Position pos = initial;
    // Reads the move of token `first` after `parent` and plays it in `pos`;
    // -1 for a damaged token, else the visitor's answer.
    const auto play = [&](uint32_t parent, uint8_t first, WalkAnswer& answer) {
        int from = 0, to = 0;
        Kind promotion = NoKind;
        const uint8_t* token = in.Here() - 1;
        if (!ReadMove(in, first, pos, from, to, promotion))
            return false;
        Node move;
        move.from = uint8_t(from);
        move.to = uint8_t(to);
        move.promotion = promotion;
        move.token.length = uint8_t(in.Here() - token);
        move.token.bytes[0] = token[0];
        move.token.bytes[1] = move.token.length > 1 ? token[1] : 0;
        MakeMove(pos, from, to, promotion);
        ++ordinal;
        answer = visit(parent, move, pos);
        return true;
    };
    const auto lineStarts = [&] {
        ByteReader probe = in;
        if (probe.Byte() != TokenEscape || probe.Byte() != TokenLineStart || probe.AtEnd())
            return false;
        in = probe;
        return true;
    };
    bool skipping = false;
    for (;;) {
        bool lineEnds = in.AtEnd();
        uint8_t first = 0;
        if (skipping) {
            if (!SkipLine(in))
                return -1;
            skipping = false;
            lineEnds = true;
        } else if (!lineEnds) {
            first = in.Byte();
            if ((first & 0x0F) == TokenEscape && (in.Peek() & 0x80)) {
                if (in.Byte() != TokenLineEnd || first != TokenEscape)
                    return -1;
                lineEnds = true;
            }
        }
        WalkAnswer answer = WalkAnswer::Go;
        if (lineEnds) {
            if (stack.empty())
                return in.AtEnd() ? 1 : -1;
            // Back at a branch: a further alternative, or the main continuation.
            Frame& frame = stack.back();
            if (lineStarts()) {
                pos = frame.before;
                if (!play(frame.parent, in.Byte(), answer))
                    return -1;
                current = ordinal;
            } else {
                current = frame.first;
                pos = frame.after;
                skipping = frame.skipAfter;
                stack.pop_back();
                continue;
            }
        } else {
            // A side line behind this move starts right after its token.
            ByteReader probe = in;
            if ((first & 0x0F) == TokenEscape)
                probe.Byte();
            const bool branches = probe.Byte() == TokenEscape && probe.Byte() == TokenLineStart;
            if (branches)
                stack.push_back(Frame{current, 0, pos, pos, false});
            if (!play(current, first, answer))
                return -1;
            current = ordinal;
            if (branches && answer != WalkAnswer::Stop) {
                Frame& frame = stack.back();
                frame.first = ordinal;
                frame.after = pos;
                frame.skipAfter = answer == WalkAnswer::SkipLine;
                pos = frame.before;
                if (!lineStarts() || !play(frame.parent, in.Byte(), answer))
                    return -1;
                current = ordinal;
            }
        }
        if (answer == WalkAnswer::Stop)
            return 0;
        skipping = answer == WalkAnswer::SkipLine;
    }
}

}  // namespace ovg

#endif
