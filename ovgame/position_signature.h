// Material and home-pawn signatures. A position's signature counts its men
// per colour and kind (kings apart) and marks the pawns still on their home
// squares. A game's signature bounds the signatures of all its positions, in
// all lines, so that a position test can reject most games without replaying
// a move: counts lie between the game's least and greatest, pawns never
// return home, and no pawn is home that was not home at the start.
#ifndef OVGAME_POSITION_SIGNATURE_H
#define OVGAME_POSITION_SIGNATURE_H

#include <cstdint>

#include "ovgame/board_rules.h"

namespace ovg {

constexpr int SignatureKinds = CountedKinds;  // pawn to queen, white then black

struct Signature {
    uint8_t count[SignatureKinds] = {};
    uint16_t home = 0;  // bit f: white pawn on file f, rank 2; bit 8 + f: black, rank 7
};

struct GameSignature {
    uint8_t least[SignatureKinds];
    uint8_t most[SignatureKinds];
    uint16_t homeAlways;   // home pawns present in every position
    uint16_t homeInitial;  // home pawns of the initial position

    // Starts from the initial position's signature.
    explicit GameSignature(const Signature& initial);
    GameSignature() = default;
    // Widens the count bounds by a position's counts.
    void AddCounts(const uint8_t* counts);
    // Keeps of homeAlways the home pawns a position has.
    void KeepHome(uint16_t home) { homeAlways &= home; }
    bool MayContain(const Signature& pattern) const;
};

Signature SignatureOf(const Position& pos);
// The home pawns of `pos`, as in Signature::home.
uint16_t HomePawnsOf(const Position& pos);

}  // namespace ovg

#endif
