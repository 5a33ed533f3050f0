// The move generator: destination lists with their quirks, the single-move
// test, and move application. Attacks are checked by the perft totals, the
// order of every list by the plain generator comparisons.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <iterator>
#include <vector>

#include "chess/move_generator.h"
#include "chess/piece_codes.h"
#include "chess/position.h"
#include "tests/chess/fen_setter.h"

namespace {

using List = std::vector<int>;

List Destinations(sPosition position, int from)
{
    int32_t list[MaxDestinations];
    return List(list, list + GenerateDestinations(&position, from, list));
}

// The castling destinations of the king of the side to move.
List Castlings(sPosition position)
{
    const int home = WhiteToMove(position) ? 4 : 60;
    int32_t list[MaxDestinations];
    List found;
    std::copy_if(list, list + GenerateDestinations(&position, home, list), std::back_inserter(found),
                 [home](int to) { return to == home + 2 || to == home - 2; });
    return found;
}

// The edge tests judge only their own kind of step: any other step passes the
// diagonal and straight tests and fails the knight test.
TEST(EdgeTests, JudgeOnlyTheirOwnSteps)
{
    struct Row { int square, step, diagonal, straight, knight; } rows[] = {
        {7, 9, 0, 1, 0},    // h1 up-right wraps; 9 is neither a straight nor a knight step
        {0, -9, 0, 1, 0},   // a1 down-left leaves the board
        {56, 8, 1, 0, 0},   // a8 upwards leaves the board
        {0, 17, 1, 1, 1},   // a1 to b3: a knight step that stays
        {6, 10, 1, 1, 0},   // g1 one up two right wraps
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::Message() << row.square << " + " << row.step);
        EXPECT_EQ(StepOkDiagonal(row.square, row.step) != 0, row.diagonal != 0);
        EXPECT_EQ(StepOkStraight(row.square, row.step) != 0, row.straight != 0);
        EXPECT_EQ(StepOkKnight(row.square, row.step) != 0, row.knight != 0);
    }
}

TEST(Destinations, OrderAndKingSafetyQuirks)
{
    const struct { const char* fen; int from; List list; } cases[] = {
        // En passant before the step; for black the higher file first; a promotion counts once.
        {"4k3/8/8/3pP3/8/8/8/4K3 w - d6", 36, {43, 44}},
        {"4k3/8/8/8/3Pp3/8/8/4K3 b - d3", 28, {20, 19}},
        {"3rk3/2P5/8/8/8/8/8/4K3 w - -", 50, {58, 59}},
        {"rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq -", 52, {}},  // black is not to move
        // En passant that uncovers the king along the rank: the victim goes before the test.
        {"8/8/8/K2pP2r/8/8/8/7k w - d6", 36, {44}},
        {"4k3/4r3/8/8/8/8/4N3/4K3 w - -", 12, {}},  // pinned knight
        {"4k3/8/8/8/1b6/8/8/1R2K3 w - -", 1, {25}},  // in check, only the answer
        // Without a king of the mover, square 63 is the king's square.
        {"8/8/8/8/8/8/8/R6r w - -", 0, {7}},
    };
    for (const auto& c : cases)
        EXPECT_EQ(Destinations(PositionFromFen(c.fen), c.from), c.list) << c.fen;
}

TEST(Destinations, Castling)
{
    const std::pair<const char*, List> cases[] = {
        {"1r2k3/8/8/8/8/8/8/R3K2R w KQ -", {6, 2}},  {"4k3/8/8/8/8/8/8/Rn2K2R w KQ -", {6}},  // b1 may be attacked
        {"4k1r1/8/8/8/8/8/8/R3K2R w KQ -", {2}},     {"4r1k1/8/8/8/8/8/8/R3K2R w KQ -", {}},  // g1 attacked; in check
        {"4k3/8/8/8/8/8/8/R3K2B w KQ -", {2}},
        {"r3k2r/8/8/8/8/8/8/3RK3 b kq -", {62}},     {"r3k2r/8/8/8/8/8/8/1R2K3 b kq -", {62, 58}},
    };
    for (const auto& [fen, expected] : cases)
        EXPECT_EQ(Castlings(PositionFromFen(fen)), expected) << fen;
    // Any non-zero field allows castling; the rook square it names plays no part.
    sPosition position = PositionFromFen("4k3/8/8/8/8/8/8/R3K2R w - -");
    position.castleWhiteShort = 8;
    position.castleWhiteLong = 200;
    EXPECT_EQ(Castlings(position), (List{6, 2}));
}

TEST(MoveIsLegal, AsksTheDestinationsOfTheFromSquare)
{
    sPosition position = StartPosition;
    EXPECT_EQ(MoveIsLegal(&position, Move(12, 28)), 1);
    EXPECT_EQ(MoveIsLegal(&position, Move(12, 28, 3) | 0xC0 | 0xABCD0000), 1);  // promotion, markers, high bits
    EXPECT_EQ(MoveIsLegal(&position, Move(12, 36)), 0);
    EXPECT_EQ(MoveIsLegal(&position, 0), 0);  // a1 to a1
    int32_t list[MaxDestinations];
    EXPECT_EQ(GenerateDestinations(&position, 64, nullptr), 0);
    EXPECT_EQ(GenerateDestinations(nullptr, 12, list), 0);
    EXPECT_EQ(GenerateDestinations(&position, -1, list), 0);
}

TEST(ApplyMove, PlaysTheWordAsItStands)
{
    const struct { const char* fen; uint32_t move; const char* after; } cases[] = {
        {"4k3/p7/8/8/8/8/8/4K3 b - -", Move(48, 32), "4k3/8/8/p7/8/8/8/4K3 w - a6"},  // nobody to take
        // Castling without a rook on h1 still puts a rook on f1; the king move clears both rights.
        {"4k3/8/8/8/8/8/8/R3K3 w KQ -", Move(4, 6), "4k3/8/8/8/8/8/8/R4RK1 b - -"},
        {"4k3/8/8/8/8/8/8/4K2R w K -", Move(4, 7), "4k3/8/8/8/8/8/8/7K b - -"},  // onto its own rook
        // Marker bits change nothing; promotion bits count only for a promotion.
        {"4k3/8/8/8/8/8/8/R3K3 w Q -", Move(0, 1) | 0xC0 | 0xC000, "4k3/8/8/8/8/8/8/1R2K3 b - -"},
        {"4k3/P7/8/8/8/8/8/4K3 w - -", Move(48, 56), "Q3k3/8/8/8/8/8/8/4K3 b - -"},
        {"1n2k3/P7/8/8/8/8/8/4K3 w - -", Move(48, 57, 3), "1N2k3/8/8/8/8/8/8/4K3 b - -"},
        // En passant is recognised by geometry, with or without the square.
        {"4k3/8/8/3pP3/8/8/8/4K3 w - -", Move(36, 43), "4k3/8/3P4/8/8/8/8/4K3 b - -"},
        {"4k3/8/8/8/3Pp3/8/8/4K3 b - d3", Move(28, 19), "4k3/8/8/8/8/3p4/8/4K3 w - -"},
    };
    for (const auto& c : cases) {
        sPosition position = PositionFromFen(c.fen);
        ApplyMove(&position, c.move);
        const sPosition expected = PositionFromFen(c.after);
        EXPECT_EQ(std::memcmp(&position, &expected, sizeof position), 0) << c.fen << " " << std::hex << c.move;
    }
    // The word 0 (a1-a1 on an empty a1) and a null record change nothing.
    sPosition position = StartPosition;
    ApplyMove(&position, 0xFFFF0000);
    ApplyMove(nullptr, Move(12, 28));
    EXPECT_EQ(OvPlayMove(&position, 0), 1);
    EXPECT_EQ(IsStartPosition(&position), 1);

    // A field of n names its rook on square n - 1: leaving that square clears
    // it, leaving the corner does not.
    position = PositionFromFen("4k3/8/8/8/8/8/8/1R2K2R w - -");
    position.castleWhiteLong = 2;
    position.castleWhiteShort = 1;
    for (const auto& [move, fields] : {std::pair{Move(7, 15), std::pair{2, 0}}, {Move(1, 9), {0, 1}}}) {
        sPosition played = position;
        ApplyMove(&played, move);
        EXPECT_EQ((std::pair<int, int>(played.castleWhiteLong, played.castleWhiteShort)), fields) << move;
    }
}

}  // namespace
