// Move tokens and the writing of a move tree as tokens.
#include "ovgame/move_codec.h"

namespace ovg {
namespace {

constexpr Kind PromotionKinds[4] = {Queen, Rook, Bishop, Knight};

uint8_t PromotionCode(Kind kind)
{
    switch (kind) {
    case Rook: return 1;
    case Bishop: return 2;
    case Knight: return 3;
    default: return 0;
    }
}

}  // namespace

MoveToken TokenOf(const Position& pos, int from, int to, int place, Kind promotion)
{
    MoveToken token;
    const uint64_t own = pos.occupied[pos.side];
    if (((own >> from) & 1) == 0)
        return token;
    const int rank = CountBits(own & ((uint64_t{1} << from) - 1));
    if (rank > 15)
        return token;
    const uint8_t promo = IsPromotion(pos, from, to) ? PromotionCode(promotion) : 0;
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

bool ReadMove(ByteReader& in, uint8_t first, const Position& pos, int& from, int& to, Kind& promotion)
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

bool EncodeTree(const GameBuffer& game, std::vector<uint8_t>& out, std::vector<uint32_t>* order,
                int32_t& mainLength)
{
    struct Frame {
        uint32_t first;
        uint32_t nextAlt;
    };
    ByteWriter writer(out);
    std::vector<Frame> stack;
    if (order != nullptr)
        order->assign(1, 0);
    mainLength = 0;
    uint32_t current = 0;
    const auto emit = [&](uint32_t node) {
        const MoveToken& token = game.nodes[node].token;
        writer.Byte(token.bytes[0]);
        if (token.length > 1)
            writer.Byte(token.bytes[1]);
        if (order != nullptr)
            order->push_back(node);
        return token.length != 0;
    };
    for (;;) {
        const uint32_t first = game.nodes[current].next;
        if (first != 0) {
            // Side lines always have a frame on the stack.
            mainLength += stack.empty();
            if (!emit(first))
                return false;
            if (game.nodes[first].alt == 0) {
                current = first;
                continue;
            }
            stack.push_back(Frame{first, game.nodes[first].alt});
        } else {
            if (stack.empty())
                return true;
            writer.Byte(TokenEscape);
            writer.Byte(TokenLineEnd);
        }
        Frame& frame = stack.back();
        if (frame.nextAlt != 0) {
            const uint32_t alt = frame.nextAlt;
            frame.nextAlt = game.nodes[alt].alt;
            writer.Byte(TokenEscape);
            writer.Byte(TokenLineStart);
            if (!emit(alt))
                return false;
            current = alt;
        } else {
            current = frame.first;
            stack.pop_back();
        }
    }
}

}  // namespace ovg
