#include <climits>
#include <cstring>

#include <gtest/gtest.h>

#include "fakes/fake_siblings.h"
#include "orvan.h"

namespace {

using CallLog = std::vector<std::string>;

constexpr MoveXY E2E4{5, 2, 5, 4, 0};  // PackedMove 0x1C0C
constexpr MoveXY E7E5{5, 7, 5, 5, 0};  // 0x2434
constexpr MoveXY G1F3{7, 1, 6, 3, 0};  // 0x1506

// With one game buffer allocated through the library and the log cleared.
class GameWalking : public ::testing::Test {
protected:
    void SetUp() override
    {
        ResetFakes();
        game = OvAllocGameBuffer();
        Fakes().calls.clear();
    }
    void TearDown() override { ResetFakes(); }
    FakeGame& Game() { return Fakes().games[game]; }

    OvGameBuffer game = 0;
};

// A board with the kings on e1 and e8, a black pawn that has just made the
// double step d7-d5 and no white pawn beside it: its en passant flag on the
// d-file is one that no pawn can use.
BoardRecord BoardAfterLoneDoubleStep()
{
    BoardRecord board{};
    board.squares[BoardIndex(4, 0)] = DrvWhiteKing;
    board.squares[BoardIndex(4, 7)] = DrvBlackKing;
    board.squares[BoardIndex(3, 4)] = DrvBlackPawn;
    board.sideToMove = 0;  // white
    board.epFile = 4;
    board.ply = 2;
    return board;
}

TEST_F(GameWalking, InitialPositionClearsAnUnusableEnPassantFlagTheCurrentOneKeepsIt)
{
    Game().initialBoard = BoardAfterLoneDoubleStep();
    Game().currentBoard = BoardAfterLoneDoubleStep();
    Fakes().results["GetInitialPosition"] = 2;  // a set-up game

    sPosition initial{}, current{};
    EXPECT_EQ(OvGetInitialPos(game, &initial), 2);
    EXPECT_EQ(OvGetCurrentPos(game, &current), 1);
    EXPECT_EQ(initial.epSquare, OV_NO_EP_SQUARE);
    EXPECT_EQ(current.epSquare, 43) << "d6";
    EXPECT_EQ(current.board[35], OV_BLACK_PAWN) << "d5";
    EXPECT_EQ(current.board[4], OV_WHITE_KING);
    EXPECT_EQ(current.sideToMove, 1);
    EXPECT_EQ(current.castleWhiteShort, 0) << "no castling flags on the board";

    // Asked again on an unmoved buffer, the same record.
    sPosition again{};
    std::memset(&again, 0xEE, sizeof again);
    EXPECT_EQ(OvGetCurrentPos(game, &again), 1);
    EXPECT_EQ(std::memcmp(&again, &current, sizeof again), 0);
    EXPECT_EQ(Fakes().calls,
              (CallLog{"GetInitialPosition(1, ptr)", "IGGameGetBoard(1)", "IGGameGetBoard(1)"}));
    EXPECT_EQ(OvGetInitialPos(game, nullptr), 2) << "null asks for the result alone";
}

TEST_F(GameWalking, MovesOfTheMainLineStopAtTheLimitWithoutMovingTheGame)
{
    for (int i = 0; i < 20; ++i) {
        Game().mainLine.push_back(E2E4);
        Game().mainLine.push_back(E7E5);
    }
    ASSERT_EQ(OvPlayMoves(game, 7), 7);
    Fakes().calls.clear();

    PackedMove moves[5] = {1, 1, 1, 1, 1};
    EXPECT_EQ(OvGetMoves(game, moves, 0), 0);
    EXPECT_EQ(OvGetMoves(game, moves, -4), 0);
    EXPECT_EQ(moves[0], 1) << "nothing stored";
    EXPECT_EQ(OvGetMoves(game, moves, 3), 3);
    EXPECT_EQ(moves[0], 0x1C0C);
    EXPECT_EQ(moves[1], 0x2434);
    EXPECT_EQ(moves[2], 0x1C0C);
    EXPECT_EQ(moves[3], 1) << "the limit holds";
    EXPECT_EQ(Game().played, 7);
    // The root's NEXT and one NEXT per further move: none past the limit.
    EXPECT_EQ(FakeCallsStartingWith("IGMoveGetNEXT").size(), 3u);

    PackedMove all[50] = {};
    PackedMove allAgain[50] = {};
    EXPECT_EQ(OvGetMoves(game, all, 50), 40);
    EXPECT_EQ(OvGetMoves(game, allAgain, 50), 40);
    EXPECT_EQ(std::memcmp(all, allAgain, sizeof all), 0);
    EXPECT_EQ(all[39], 0x2434);
    EXPECT_EQ(all[40], 0);
}

TEST_F(GameWalking, PromotionPiecesReachTheWord)
{
    struct Case {
        int32_t piece;
        PackedMove word;
    };
    // a7-a8 for white, h2-h1 for black: the fifth value of the move decides.
    for (const Case& c : {Case{DrvWhiteKnight, 0xF830}, Case{DrvWhiteQueen, 0x3830},
                          Case{0, 0x3830}, Case{DrvBlackKnight, 0xC70F}}) {
        const bool white = c.piece != DrvBlackKnight;
        Game().mainLine = {white ? MoveXY{1, 7, 1, 8, c.piece} : MoveXY{8, 2, 8, 1, c.piece}};
        Game().played = 0;
        PackedMove word = 0;
        EXPECT_EQ(OvGetMoves(game, &word, 1), 1);
        EXPECT_EQ(word, c.word) << "piece " << c.piece;
        EXPECT_EQ(OvGetNextMove(game), c.word) << "piece " << c.piece;
    }
}

TEST_F(GameWalking, PlayAndGotoWalkBackAndForth)
{
    Game().mainLine.assign(10, E2E4);
    struct Step {
        bool gotoMove;
        int32_t argument;
        int32_t result;
        const char* driverCall;
        int32_t played;
    };
    for (const Step& s : {
             Step{false, 4, 4, "PlayMoves(1, 4)", 4},
             Step{false, -1, 1, "PlayMoves(1, -1)", 3},
             Step{true, 3, 0, "PlayMoves(1, 0)", 3},  // already there: a step of 0
             Step{true, 8, 5, "PlayMoves(1, 5)", 8},
             Step{true, 0, 8, "PlayMoves(1, -8)", 0},
             Step{false, -1, 0, "PlayMoves(1, -1)", 0},   // before the start
             Step{true, 12, 10, "PlayMoves(1, 12)", 10},  // past the end
             Step{false, 1, 0, "PlayMoves(1, 1)", 10},
             Step{true, INT32_MIN, 10, "PlayMoves(1, -2147483648)", 0},
             Step{true, INT32_MAX, 10, "PlayMoves(1, 2147483647)", 10},
         }) {
        Fakes().calls.clear();
        const int32_t result =
            s.gotoMove ? OvGotoMove(game, s.argument) : OvPlayMoves(game, s.argument);
        EXPECT_EQ(result, s.result) << s.driverCall;
        EXPECT_EQ(Fakes().calls.back(), s.driverCall);
        EXPECT_EQ(Game().played, s.played) << s.driverCall;
    }

    // The next move follows the current position, is not played by reading,
    // and is 0 at the end.
    Game().mainLine = {E2E4, E7E5, G1F3};
    Game().played = 0;
    EXPECT_EQ(OvGetNextMove(game), 0x1C0C);
    EXPECT_EQ(OvGetNextMove(game), 0x1C0C);
    ASSERT_EQ(OvPlayMoves(game, 2), 2);
    EXPECT_EQ(OvGetNextMove(game), 0x1506);
    ASSERT_EQ(OvPlayMoves(game, 1), 1);
    Fakes().calls.clear();
    EXPECT_EQ(OvGetNextMove(game), 0);
    EXPECT_TRUE(FakeCallsStartingWith("PlayMoves").empty());
    Game().mainLine.clear();
    Game().played = 0;
    EXPECT_EQ(OvGetNextMove(game), 0) << "a game without moves";
    PackedMove moves[2] = {};
    EXPECT_EQ(OvGetMoves(game, moves, 2), 0);
}

}  // namespace
