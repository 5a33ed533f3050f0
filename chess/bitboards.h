// Square sets as 64-bit words (bit n for square n) and the constant tables
// built from the board geometry at compile time: single-step targets, the
// squares a pawn attacks, and the rays of the sliders. Slider attacks come
// from the rays by a scan for the first blocker.
#ifndef ORVAN_CHESS_BITBOARDS_H
#define ORVAN_CHESS_BITBOARDS_H

#include <array>
#include <bit>
#include <cstdint>

#include "chess/board_geometry.h"

using SquareSet = uint64_t;

constexpr SquareSet SquareBit(int square) { return SquareSet{1} << square; }

// Whether a set holds exactly one square (without a population count, which
// the baseline instruction set lacks).
constexpr bool OneSquare(SquareSet set) { return set != 0 && (set & (set - 1)) == 0; }

inline constexpr SquareSet EdgeRanks = 0xFF000000000000FFull;

namespace bitboard_tables {

constexpr std::array<SquareSet, 64> FromTargets(const std::array<TargetList, 64>& targets)
{
    std::array<SquareSet, 64> sets{};
    for (int square = 0; square < 64; ++square)
        for (int i = 0; i < targets[square].count; ++i)
            sets[square] |= SquareBit(targets[square].squares[i]);
    return sets;
}

// The squares a pawn on each square attacks: white forwards (+7, +9), black
// backwards (-9, -7), neither across an edge file nor off the board.
constexpr std::array<SquareSet, 64> PawnAttacks(bool white)
{
    std::array<SquareSet, 64> sets{};
    for (int square = 0; square < 64; ++square)
        for (int step : {white ? 7 : -9, white ? 9 : -7})
            if (LandsAway(square, step, 1, 1))
                sets[square] |= SquareBit(square + step);
    return sets;
}

}  // namespace bitboard_tables

inline constexpr auto KnightAttackSets = bitboard_tables::FromTargets(KnightTargets);
inline constexpr auto KingAttackSets = bitboard_tables::FromTargets(KingTargets);
inline constexpr auto WhitePawnAttackSets = bitboard_tables::PawnAttacks(true);
inline constexpr auto BlackPawnAttackSets = bitboard_tables::PawnAttacks(false);

// RaySets[direction][square]: the squares of Rays[square][direction].
inline constexpr auto RaySets = [] {
    std::array<std::array<SquareSet, 64>, 8> sets{};
    for (int direction = 0; direction < 8; ++direction)
        for (int square = 0; square < 64; ++square)
            for (int i = 0; i < Rays[square][direction].length; ++i)
                sets[direction][square] |= SquareBit(Rays[square][direction].squares[i]);
    return sets;
}();

// All the squares on the diagonals, and on the rank and file, of each square.
inline constexpr auto DiagonalLines = [] {
    std::array<SquareSet, 64> sets{};
    for (int square = 0; square < 64; ++square)
        sets[square] = RaySets[0][square] | RaySets[1][square] | RaySets[2][square] | RaySets[3][square];
    return sets;
}();
inline constexpr auto StraightLines = [] {
    std::array<SquareSet, 64> sets{};
    for (int square = 0; square < 64; ++square)
        sets[square] = RaySets[4][square] | RaySets[5][square] | RaySets[6][square] | RaySets[7][square];
    return sets;
}();

// Directions with a positive step meet their first blocker at the lowest
// square of the ray, the others at the highest.
constexpr bool RisingDirection(int direction) { return QueenSteps[direction] > 0; }

// The squares a slider on `square` reaches in one direction: the ray up to
// and including the first occupied square.
constexpr SquareSet RayAttacks(int direction, int square, SquareSet occupied)
{
    const SquareSet ray = RaySets[direction][square];
    const SquareSet blockers = ray & occupied;
    if (blockers == 0)
        return ray;
    const int first = RisingDirection(direction) ? std::countr_zero(blockers) : 63 - std::countl_zero(blockers);
    return ray ^ RaySets[direction][first];
}

constexpr SquareSet DiagonalAttacks(int square, SquareSet occupied)
{
    return RayAttacks(0, square, occupied) | RayAttacks(1, square, occupied) | RayAttacks(2, square, occupied) |
           RayAttacks(3, square, occupied);
}

constexpr SquareSet StraightAttacks(int square, SquareSet occupied)
{
    return RayAttacks(4, square, occupied) | RayAttacks(5, square, occupied) | RayAttacks(6, square, occupied) |
           RayAttacks(7, square, occupied);
}

// BetweenSets[from][to]: the squares strictly between two squares on one
// line; empty when they share no line.
inline constexpr auto BetweenSets = [] {
    std::array<std::array<SquareSet, 64>, 64> sets{};
    for (int from = 0; from < 64; ++from)
        for (int to = 0; to < 64; ++to) {
            const int direction = DirectionTo[from][to];
            if (direction >= 0)
                sets[from][to] = RaySets[direction][from] & ~RaySets[direction][to] & ~SquareBit(to);
        }
    return sets;
}();

constexpr SquareSet SquaresBetween(int from, int to) { return BetweenSets[from][to]; }

static_assert(RaySets[1][0] == 0x8040201008040200ull && RaySets[7][7] == 0x7Full);
static_assert(WhitePawnAttackSets[8] == SquareBit(17) && BlackPawnAttackSets[15] == SquareBit(6));
static_assert(StraightAttacks(0, SquareBit(3) | SquareBit(16)) == (SquareBit(1) | SquareBit(2) | SquareBit(3) |
                                                                  SquareBit(8) | SquareBit(16)));
static_assert(SquaresBetween(0, 63) == (RaySets[1][0] & ~SquareBit(63)) && SquaresBetween(0, 10) == 0);

#endif
