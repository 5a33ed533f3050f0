// The move generator: destination lists with their quirks, the single-move
// test, and move application. Edge steps and attacks are checked by the perft
// totals.
#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "chess/move_generator.h"
#include "chess/piece_codes.h"
#include "chess/position.h"
#include "tests/chess/fen_setter.h"

namespace {

constexpr uint32_t Move(int from, int to, uint32_t promotion = 0)
{
    return static_cast<uint32_t>(from | to << 8) | promotion << 14;
}

std::vector<int> Destinations(sPosition position, int from)
{
    int32_t list[MaxDestinations];
    const int count = GenerateDestinations(&position, from, list);
    return std::vector<int>(list, list + count);
}

bool SameRecord(const sPosition& a, const sPosition& b) { return std::memcmp(&a, &b, sizeof a) == 0; }

TEST(Destinations, ListsInGenerationOrder)
{
    // En passant before the step; for black the higher file first; a
    // promotion counts once. The plain generator comparisons check the
    // order everywhere else.
    EXPECT_EQ(Destinations(PositionFromFen("4k3/8/8/3pP3/8/8/8/4K3 w - d6"), 36), (std::vector<int>{43, 44}));
    EXPECT_EQ(Destinations(PositionFromFen("4k3/8/8/8/3Pp3/8/8/4K3 b - d3"), 28), (std::vector<int>{20, 19}));
    EXPECT_EQ(Destinations(PositionFromFen("3rk3/2P5/8/8/8/8/8/4K3 w - -"), 50), (std::vector<int>{58, 59}));
    EXPECT_TRUE(Destinations(StartPosition, 52).empty()) << "black is not to move";
}

TEST(Destinations, KingSafetyQuirks)
{
    // En passant that uncovers the king along the rank is refused: the victim
    // goes before the king is tested.
    EXPECT_EQ(Destinations(PositionFromFen("8/8/8/K2pP2r/8/8/8/7k w - d6"), 36), (std::vector<int>{44}));
    EXPECT_EQ(Destinations(PositionFromFen("8/8/8/K2pP3/8/8/8/7k w - d6"), 36), (std::vector<int>{43, 44}));
    // A pinned knight has nothing; a pinned rook moves along the pin.
    EXPECT_TRUE(Destinations(PositionFromFen("4k3/4r3/8/8/8/8/4N3/4K3 w - -"), 12).empty());
    EXPECT_EQ(Destinations(PositionFromFen("4k3/4r3/8/8/8/8/4R3/4K3 w - -"), 12),
              (std::vector<int>{20, 28, 36, 44, 52}));
    // In check, only moves that answer it.
    EXPECT_EQ(Destinations(PositionFromFen("4k3/8/8/8/1b6/8/8/R3K3 w - -"), 0), (std::vector<int>{}));
    EXPECT_EQ(Destinations(PositionFromFen("4k3/8/8/8/1b6/8/8/1R2K3 w - -"), 1), (std::vector<int>{25}));
    // Without a king of the mover, square 63 is the king's square: a rook
    // attacking h8 leaves only its own capture.
    EXPECT_EQ(Destinations(PositionFromFen("8/8/8/8/8/8/8/R6r w - -"), 0), (std::vector<int>{7}));
    EXPECT_EQ(Destinations(PositionFromFen("8/8/8/8/8/8/8/R5r1 w - -"), 0).size(), 13u);
}

TEST(Destinations, Castling)
{
    struct Case {
        const char* fen;
        std::vector<int> castlings;  // two-square king steps among the destinations
    };
    for (const Case& c : {
             Case{"1r2k3/8/8/8/8/8/8/R3K2R w KQ -", {6, 2}},  // b1 may be attacked
             Case{"4k3/8/8/8/8/8/8/Rn2K2R w KQ -", {6}},      // a man on b1
             Case{"4k3/8/8/8/8/8/8/R3K1nR w KQ -", {2}},      // a man on g1
             Case{"4k1r1/8/8/8/8/8/8/R3K2R w KQ -", {2}},     // g1 attacked
             Case{"4r1k1/8/8/8/8/8/8/R3K2R w KQ -", {}},      // in check
             Case{"4k3/8/8/8/8/8/8/4K2R w Q -", {}},          // a field without its rook
             Case{"4k3/8/8/8/8/8/8/R3K2B w KQ -", {2}},       // a bishop in the corner is no rook
             Case{"r3k2r/8/8/8/8/8/8/3RK3 b kq -", {62}},
             Case{"r3k2r/8/8/8/8/8/8/1R2K3 b kq -", {62, 58}}, // b8 may be attacked
         }) {
        const sPosition position = PositionFromFen(c.fen);
        const int home = WhiteToMove(position) ? 4 : 60;
        std::vector<int> castlings;
        for (int to : Destinations(position, home))
            if (to == home + 2 || to == home - 2)
                castlings.push_back(to);
        EXPECT_EQ(castlings, c.castlings) << c.fen;
    }
    // Any non-zero field allows castling; the rook square it names plays no part.
    sPosition position = PositionFromFen("4k3/8/8/8/8/8/8/R3K2R w - -");
    position.castleWhiteShort = 8;
    position.castleWhiteLong = 200;
    EXPECT_EQ(Destinations(position, 4), (std::vector<int>{11, 13, 12, 5, 3, 6, 2}));
}

TEST(MoveIsLegal, AsksTheDestinationsOfTheFromSquare)
{
    sPosition position = PositionFromFen("rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq -");
    EXPECT_EQ(MoveIsLegal(&position, Move(12, 28)), 1);
    EXPECT_EQ(MoveIsLegal(&position, Move(12, 28, 3) | 0xC0 | 0xABCD0000), 1);  // promotion, markers, high bits
    EXPECT_EQ(MoveIsLegal(&position, Move(12, 36)), 0);
    EXPECT_EQ(MoveIsLegal(&position, Move(52, 36)), 0);  // black is not to move
    EXPECT_EQ(MoveIsLegal(&position, 0), 0);              // a1 to a1
    EXPECT_EQ(GenerateDestinations(&position, 64, nullptr), 0);
    int32_t list[MaxDestinations];
    EXPECT_EQ(GenerateDestinations(nullptr, 12, list), 0);
    EXPECT_EQ(GenerateDestinations(&position, -1, list), 0);
}

TEST(ApplyMove, PlaysTheWordAsItStands)
{
    struct Case {
        const char* fen;
        uint32_t move;
        const char* after;  // FEN of the result, castling fields as KQkq letters
    };
    for (const Case& c : {
             Case{"rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq -", Move(12, 28),
                  "rnbqkbnr/pppppppp/8/8/4P3/8/PPPP1PPP/RNBQKBNR b KQkq e3"},
             // A double step sets the en passant square with nobody to take.
             Case{"4k3/p7/8/8/8/8/8/4K3 b - -", Move(48, 32), "4k3/8/8/p7/8/8/8/4K3 w - a6"},
             // Castling without a rook on h1 still puts a rook on f1; the king move clears both rights.
             Case{"4k3/8/8/8/8/8/8/R3K3 w KQ -", Move(4, 6), "4k3/8/8/8/8/8/8/R4RK1 b - -"},
             Case{"r3k2r/8/8/8/8/8/8/4K3 b kq -", Move(60, 58), "2kr3r/8/8/8/8/8/8/4K3 w - -"},
             // A king onto its own rook: an ordinary move, the rook is gone.
             Case{"4k3/8/8/8/8/8/8/4K2R w K -", Move(4, 7), "4k3/8/8/8/8/8/8/7K b - -"},
             Case{"4k2r/8/8/8/8/8/8/4K2R w Kk -", Move(7, 63), "4k2R/8/8/8/8/8/8/4K3 b - -"},
             Case{"4k3/8/8/8/8/8/8/R3K3 w Q -", Move(0, 8), "4k3/8/8/8/8/8/R7/4K3 b - -"},
             // Marker bits change nothing; promotion bits count only for a promotion.
             Case{"4k3/8/8/8/8/8/8/R3K3 w Q -", Move(0, 1) | 0xC0 | 0xC000, "4k3/8/8/8/8/8/8/1R2K3 b - -"},
             Case{"4k3/P7/8/8/8/8/8/4K3 w - -", Move(48, 56), "Q3k3/8/8/8/8/8/8/4K3 b - -"},
             Case{"1n2k3/P7/8/8/8/8/8/4K3 w - -", Move(48, 57, 3), "1N2k3/8/8/8/8/8/8/4K3 b - -"},
             Case{"4k3/8/8/8/8/8/1p6/4K3 b - -", Move(9, 1, 2), "4k3/8/8/8/8/8/8/1b2K3 w - -"},
             // En passant is recognised by geometry, with or without the square.
             Case{"4k3/8/8/3pP3/8/8/8/4K3 w - -", Move(36, 43), "4k3/8/3P4/8/8/8/8/4K3 b - -"},
             Case{"4k3/8/8/8/3Pp3/8/8/4K3 b - d3", Move(28, 19), "4k3/8/8/8/8/3p4/8/4K3 w - -"},
         }) {
        sPosition position = PositionFromFen(c.fen);
        ApplyMove(&position, c.move);
        const sPosition expected = PositionFromFen(c.after);
        EXPECT_TRUE(SameRecord(position, expected)) << c.fen << " " << std::hex << c.move;
    }
}

TEST(ApplyMove, WordZeroAndNull)
{
    sPosition position = StartPosition;
    ApplyMove(&position, 0);
    ApplyMove(&position, 0xFFFF0000);
    EXPECT_EQ(IsStartPosition(&position), 1);
    ApplyMove(nullptr, Move(12, 28));
    EXPECT_EQ(OvPlayMove(&position, 0), 1);
    EXPECT_EQ(IsStartPosition(&position), 1);
    EXPECT_EQ(OvPlayMove(&position, Move(6, 21)), 1);
    EXPECT_EQ(position.board[21], OV_WHITE_KNIGHT);
    EXPECT_EQ(position.sideToMove, 0);
}

TEST(ApplyMove, RookSquareOfAFieldAboveOne)
{
    // A field of n names its rook on square n - 1: leaving that square clears
    // it, leaving the corner does not.
    sPosition position = PositionFromFen("4k3/8/8/8/8/8/8/1R2K2R w - -");
    position.castleWhiteLong = 2;  // rook on b1
    position.castleWhiteShort = 1;
    sPosition played = position;
    ApplyMove(&played, Move(7, 15));
    EXPECT_EQ(played.castleWhiteLong, 2);
    EXPECT_EQ(played.castleWhiteShort, 0);
    played = position;
    ApplyMove(&played, Move(1, 9));
    EXPECT_EQ(played.castleWhiteLong, 0);
    EXPECT_EQ(played.castleWhiteShort, 1);
}

}  // namespace
