// Board geometry on the 64-square board: the step tables, the edge tests, and
// tables built from them at compile time (rays, knight and king targets,
// lines through a square) so that the hot paths look edges up instead of
// computing them.
#ifndef ORVAN_CHESS_BOARD_GEOMETRY_H
#define ORVAN_CHESS_BOARD_GEOMETRY_H

#include <array>
#include <cstddef>
#include <cstdint>

inline constexpr std::array<int, 4> DiagonalSteps = {7, 9, -7, -9};
inline constexpr std::array<int, 4> StraightSteps = {8, 1, -8, -1};
inline constexpr std::array<int, 8> KnightSteps = {6, 15, 17, 10, -6, -15, -17, -10};
// Queen and king: the diagonal steps, then the straight ones.
inline constexpr std::array<int, 8> QueenSteps = {DiagonalSteps[0], DiagonalSteps[1], DiagonalSteps[2],
                                                  DiagonalSteps[3], StraightSteps[0], StraightSteps[1],
                                                  StraightSteps[2], StraightSteps[3]};
inline constexpr int FirstStraightDirection = 4;

constexpr int FileOf(int square) { return square & 7; }
constexpr int RankOf(int square) { return square >> 3; }

// Whether `square + step` lies on the board exactly `files` files and `ranks`
// ranks away from `square`.
constexpr bool LandsAway(int square, int step, int files, int ranks)
{
    const int target = square + step;
    if (square < 0 || square > 63 || target < 0 || target > 63)
        return false;
    const int fileDistance = FileOf(target) > FileOf(square) ? FileOf(target) - FileOf(square)
                                                             : FileOf(square) - FileOf(target);
    const int rankDistance = RankOf(target) > RankOf(square) ? RankOf(target) - RankOf(square)
                                                             : RankOf(square) - RankOf(target);
    return fileDistance == files && rankDistance == ranks;
}

// Diagonal steps must stay on the board one file and one rank away; other
// steps pass.
constexpr bool DiagonalStepStaysOnBoard(int square, int step)
{
    if (step == 7 || step == 9 || step == -7 || step == -9)
        return LandsAway(square, step, 1, 1);
    return true;
}

// Straight steps must stay on the board one file or one rank away; other
// steps pass.
constexpr bool StraightStepStaysOnBoard(int square, int step)
{
    if (step == 1 || step == -1)
        return LandsAway(square, step, 1, 0);
    if (step == 8 || step == -8)
        return LandsAway(square, step, 0, 1);
    return true;
}

// Knight steps must land two files and one rank, or one file and two ranks
// away; any other step fails.
constexpr bool KnightStepStaysOnBoard(int square, int step)
{
    for (int knightStep : KnightSteps)
        if (step == knightStep)
            return LandsAway(square, step, 2, 1) || LandsAway(square, step, 1, 2);
    return false;
}

constexpr bool QueenStepStaysOnBoard(int square, int step)
{
    return DiagonalStepStaysOnBoard(square, step) && StraightStepStaysOnBoard(square, step);
}

// The squares a slider passes from a square in one direction, nearest first.
struct Ray {
    uint8_t length;
    uint8_t squares[7];
};

// Up to eight target squares, in the order of their step table.
struct TargetList {
    uint8_t count;
    uint8_t squares[8];
};

// Rays[square][direction], directions in the order of QueenSteps.
inline constexpr auto Rays = [] {
    std::array<std::array<Ray, 8>, 64> table{};
    for (int square = 0; square < 64; ++square)
        for (int direction = 0; direction < 8; ++direction) {
            Ray& ray = table[square][direction];
            const int step = QueenSteps[direction];
            for (int at = square; QueenStepStaysOnBoard(at, step); at += step)
                ray.squares[ray.length++] = static_cast<uint8_t>(at + step);
        }
    return table;
}();

// The targets of single steps from each square, in the order of `steps`,
// for the steps that `staysOnBoard` allows.
template <size_t N>
constexpr std::array<TargetList, 64> SingleStepTargets(const std::array<int, N>& steps,
                                                       bool (*staysOnBoard)(int, int))
{
    std::array<TargetList, 64> table{};
    for (int square = 0; square < 64; ++square)
        for (int step : steps)
            if (staysOnBoard(square, step))
                table[square].squares[table[square].count++] = static_cast<uint8_t>(square + step);
    return table;
}

inline constexpr auto KnightTargets = SingleStepTargets(KnightSteps, KnightStepStaysOnBoard);
inline constexpr auto KingTargets = SingleStepTargets(QueenSteps, QueenStepStaysOnBoard);

// DirectionTo[square][target]: the direction (index into QueenSteps) of
// the ray from `square` that passes `target`, -1 when none does.
inline constexpr auto DirectionTo = [] {
    std::array<std::array<int8_t, 64>, 64> table{};
    for (auto& row : table)
        row.fill(-1);
    for (int square = 0; square < 64; ++square)
        for (int direction = 0; direction < 8; ++direction)
            for (int i = 0; i < Rays[square][direction].length; ++i)
                table[square][Rays[square][direction].squares[i]] = static_cast<int8_t>(direction);
    return table;
}();

static_assert(Rays[27][0].length == 3 && Rays[0][1].length == 7 && Rays[7][0].length == 7);
static_assert(KnightTargets[0].count == 2 && KnightTargets[27].count == 8);
static_assert(KingTargets[0].count == 3 && KingTargets[27].count == 8);

#endif
