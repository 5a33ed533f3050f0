// Material and home-pawn signatures of positions and games.
#include "ovgame/position_signature.h"

#include <algorithm>

namespace ovg {

Signature SignatureOf(const Position& pos)
{
    Signature sig;
    std::copy(pos.counts, pos.counts + SignatureKinds, sig.count);
    for (int file = 0; file < 8; ++file) {
        if (pos.squares[SquareOf(file, 1)] == PieceCode(White, Pawn))
            sig.home |= uint16_t(1u << file);
        if (pos.squares[SquareOf(file, 6)] == PieceCode(Black, Pawn))
            sig.home |= uint16_t(1u << (8 + file));
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
