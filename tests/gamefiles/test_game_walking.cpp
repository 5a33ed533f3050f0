// Walking a game buffer against the recording fakes: positions and the moves
// of the main line.
#include <cstring>

#include <gtest/gtest.h>

#include "fakes/fake_siblings.h"
#include "orvan.h"

namespace {

using CallLog = std::vector<std::string>;

constexpr MoveXY E2E4{5, 2, 5, 4, 0};  // PackedMove 0x1C0C
constexpr MoveXY E7E5{5, 7, 5, 5, 0};  // 0x2434

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
    // d6, the pawn on d5, the white king, white to move and no castling flags.
    EXPECT_EQ((std::vector<int32_t>{current.epSquare, current.board[35], current.board[4], current.sideToMove,
                                    current.castleWhiteShort}),
              (std::vector<int32_t>{43, OV_BLACK_PAWN, OV_WHITE_KING, 1, 0}));

    // Asked again on an unmoved buffer, the same record.
    sPosition again;
    std::memset(&again, 0xEE, sizeof again);
    EXPECT_EQ(OvGetCurrentPos(game, &again), 1);
    EXPECT_EQ(std::memcmp(&again, &current, sizeof again), 0);
    EXPECT_EQ(Fakes().calls, (CallLog{"GetInitialPosition(1, ptr)", "IGGameGetBoard(1)", "IGGameGetBoard(1)"}));
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
    EXPECT_EQ(OvGetMoves(game, moves, 0) + OvGetMoves(game, moves, -4), 0);
    EXPECT_EQ(moves[0], 1) << "nothing stored";
    EXPECT_EQ(OvGetMoves(game, moves, 3), 3);
    EXPECT_EQ(std::vector<PackedMove>(moves, moves + 4), (std::vector<PackedMove>{0x1C0C, 0x2434, 0x1C0C, 1}))
        << "the limit holds";
    EXPECT_EQ(Game().played, 7);
    // The root's NEXT and one NEXT per further move: none past the limit.
    EXPECT_EQ(FakeCallsStartingWith("IGMoveGetNEXT").size(), 3u);

    PackedMove all[50] = {};
    EXPECT_EQ(OvGetMoves(game, all, 50), 40);
    EXPECT_EQ(std::pair(all[39], all[40]), std::pair(PackedMove(0x2434), PackedMove(0)));
}

}  // namespace
