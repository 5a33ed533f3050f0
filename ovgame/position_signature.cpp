// Material and home-pawn signatures of positions and games.
#include "ovgame/position_signature.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace ovg {

namespace {

// Bit f set where the square of file f on the rank starting at `row` holds
// `code`: the eight squares compared at once as the bytes of one word.
uint16_t FilesHolding(const uint8_t* row, uint8_t code)
{
    static_assert(std::endian::native == std::endian::little);
    constexpr uint64_t Low7 = 0x7F7F7F7F7F7F7F7Full;
    uint64_t squares;
    std::memcpy(&squares, row, 8);
    const uint64_t differ = squares ^ (0x0101010101010101ull * code);
    const uint64_t same = ~(((differ & Low7) + Low7) | differ | Low7);  // 0x80 in each equal byte
    return uint16_t(((same >> 7) * 0x0102040810204080ull) >> 56);
}

}  // namespace

uint16_t HomePawnsOf(const Position& pos)
{
    return uint16_t(FilesHolding(pos.squares + SquareOf(0, 1), PieceCode(White, Pawn)) |
                    FilesHolding(pos.squares + SquareOf(0, 6), PieceCode(Black, Pawn)) << 8);
}

Signature SignatureOf(const Position& pos)
{
    Signature sig;
    std::copy(pos.counts, pos.counts + SignatureKinds, sig.count);
    sig.home = HomePawnsOf(pos);
    return sig;
}

GameSignature::GameSignature(const Signature& initial)
    : homeAlways(initial.home), homeInitial(initial.home)
{
    std::copy(initial.count, initial.count + SignatureKinds, least);
    std::copy(initial.count, initial.count + SignatureKinds, most);
}

void GameSignature::AddCounts(const uint8_t* counts)
{
    // A copy, so that the bounds are known not to overlap the counts.
    uint8_t count[SignatureKinds];
    std::copy(counts, counts + SignatureKinds, count);
    for (int i = 0; i < SignatureKinds; ++i) {
        least[i] = std::min(least[i], count[i]);
        most[i] = std::max(most[i], count[i]);
    }
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
