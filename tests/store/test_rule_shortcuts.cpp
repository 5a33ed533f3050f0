// The store's table-driven move places and legality test against the plain
// way: the place is the index in the listed targets, and a move is legal when
// the mover's king, walked out square by square, stands unattacked after it.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "ovgame/board_rules.h"

namespace {

using namespace ovg;

// Whether a man of `by` attacks `square`, found by walking every line.
bool PlainAttacked(const Position& pos, int square, Color by)
{
    const auto holds = [&](int file, int rank, Kind kind) {
        return file >= 0 && file < 8 && rank >= 0 && rank < 8 && pos.squares[SquareOf(file, rank)] == PieceCode(by, kind);
    };
    const int file = FileOf(square);
    const int rank = RankOf(square);
    const int behind = by == White ? -1 : 1;
    if (holds(file - 1, rank + behind, Pawn) || holds(file + 1, rank + behind, Pawn))
        return true;
    for (int df = -2; df <= 2; ++df) {
        for (int dr = -2; dr <= 2; ++dr) {
            if ((df * df + dr * dr == 5 && holds(file + df, rank + dr, Knight)) ||
                (df * df + dr * dr <= 2 && (df | dr) != 0 && holds(file + df, rank + dr, King)))
                return true;
        }
    }
    for (int df = -1; df <= 1; ++df) {
        for (int dr = -1; dr <= 1; ++dr) {
            if ((df | dr) == 0)
                continue;
            const Kind slider = df != 0 && dr != 0 ? Bishop : Rook;
            int f = file + df;
            int r = rank + dr;
            while (f >= 0 && f < 8 && r >= 0 && r < 8 && !IsPiece(pos.squares[SquareOf(f, r)])) {
                f += df;
                r += dr;
            }
            if (holds(f, r, slider) || holds(f, r, Queen))
                return true;
        }
    }
    return false;
}

// The place of `to` among the listed targets when the move is legal, else -1.
int PlainLegalPlace(const Position& pos, int from, int to)
{
    const uint8_t code = pos.squares[from];
    if (!IsPiece(code) || ColorOf(code) != pos.side)
        return -1;
    uint8_t targets[MaxTargets];
    const int count = TargetsOf(pos, from, targets);
    const int place = int(std::find(targets, targets + count, uint8_t(to)) - targets);
    if (place == count)
        return -1;
    const Color own = Color(pos.side);
    const Color enemy = Color(own ^ 1);
    const bool castling = KindOf(code) == King && (to - from == 2 || from - to == 2);
    if (castling && (PlainAttacked(pos, from, enemy) || PlainAttacked(pos, (from + to) / 2, enemy)))
        return -1;
    Position after = pos;
    MakeMove(after, from, to, Queen);
    const int king = after.kingSquare[own];
    return king != NoSquare && PlainAttacked(after, king, enemy) ? -1 : place;
}

// A position of a few random men besides the kings, with random castling
// flags and en passant file, so that pins, checks and odd corners abound.
Position RandomSetUp(std::mt19937& random)
{
    Position pos{};
    const auto square = [&] { return int(random() % 64); };
    pos.squares[square()] = PieceCode(White, King);
    pos.squares[square()] = PieceCode(Black, King);
    const int men = 2 + int(random() % 10);
    for (int i = 0; i < men; ++i) {
        const int sq = square();
        const Kind kind = Kind(random() % 5);
        if (!IsPiece(pos.squares[sq]) && !(kind == Pawn && (RankOf(sq) == 0 || RankOf(sq) == 7)))
            pos.squares[sq] = PieceCode(Color(random() % 2), kind);
    }
    pos.side = uint8_t(random() % 2);
    pos.castling = uint8_t(random() % 16);
    pos.epFile = uint8_t(random() % 9);
    pos.ply = 1;
    Normalise(pos);
    return pos;
}

// Compares every from-to pair of `pos`; returns the legal moves found.
std::vector<std::pair<int, int>> ExpectSameVerdicts(const Position& pos)
{
    std::vector<std::pair<int, int>> legal;
    for (int from = 0; from < 64; ++from) {
        for (int to = 0; to < 64; ++to) {
            const int plain = PlainLegalPlace(pos, from, to);
            EXPECT_EQ(LegalTargetPlace(pos, from, to), plain) << "from " << from << " to " << to;
            if (plain < 0)
                continue;
            EXPECT_EQ(TargetAt(pos, from, plain), to);
            legal.emplace_back(from, to);
        }
    }
    return legal;
}

TEST(RuleShortcuts, PlacesAndVerdictsMatchThePlainRulesInPlayedGames)
{
    std::mt19937 random(20261123);
    for (int game = 0; game < 40 && !HasFailure(); ++game) {
        Position pos = StartPosition();
        for (int ply = 0; ply < 160 && !HasFailure(); ++ply) {
            const auto legal = ExpectSameVerdicts(pos);
            if (legal.empty())
                break;
            const auto [from, to] = legal[random() % legal.size()];
            MakeMove(pos, from, to, Kind(Knight + random() % 4));
        }
    }
}

TEST(RuleShortcuts, PlacesAndVerdictsMatchThePlainRulesInSetUpPositions)
{
    std::mt19937 random(7);
    for (int i = 0; i < 3000 && !HasFailure(); ++i)
        ExpectSameVerdicts(RandomSetUp(random));
}

}  // namespace
