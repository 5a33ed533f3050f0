// Material and home-pawn signatures of positions and games.
#include "ovgame/position_signature.h"

#include <algorithm>

namespace ovg {

Signature SignatureOf(const Position& pos)
{
    Signature sig;
    for (int sq = 0; sq < 64; ++sq) {
        const uint8_t code = pos.squares[sq];
        const Kind kind = KindOf(code);
        if (kind > Queen)
            continue;
        const Color color = ColorOf(code);
        sig.count[color * 5 + kind] = uint8_t(std::min<int>(sig.count[color * 5 + kind] + 1, 255));
        if (kind == Pawn && RankOf(sq) == (color == White ? 1 : 6))
            sig.home |= uint16_t(1u << (color * 8 + FileOf(sq)));
    }
    return sig;
}

GameSignature::GameSignature(const Signature& initial)
    : homeAlways(initial.home), homeInitial(initial.home)
{
    std::copy(initial.count, initial.count + SignatureKinds, least);
    std::copy(initial.count, initial.count + SignatureKinds, most);
}

void GameSignature::Add(const Signature& position)
{
    for (int i = 0; i < SignatureKinds; ++i) {
        least[i] = std::min(least[i], position.count[i]);
        most[i] = std::max(most[i], position.count[i]);
    }
    homeAlways &= position.home;
}

bool GameSignature::MayContain(const Signature& pattern) const
{
    for (int i = 0; i < SignatureKinds; ++i) {
        if (pattern.count[i] < least[i] || pattern.count[i] > most[i])
            return false;
    }
    return (pattern.home & homeAlways) == homeAlways && (pattern.home & ~homeInitial) == 0;
}

}  // namespace ovg
