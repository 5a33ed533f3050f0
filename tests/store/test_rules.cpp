// The store's own legality test on set-up positions.
#include "tests/store/store_helpers.h"

namespace {

struct RuleCase {
    const char* name;
    const char* pieces;
    int32_t ply;     // odd: white to move
    int32_t epFile;  // 1 to 8, 0 none
    const char* move;
    bool legal;
};

const RuleCase Cases[] = {
    {"castling through an attacked square", "r3kr2/8/8/8/8/8/8/R3K2R", 1, 0, "e1g1", false},
    {"castling out of check", "4r1k1/8/8/8/8/8/8/R3K2R", 1, 0, "e1c1", false},
    {"attacked b-file square does not stop long castling", "kr6/8/8/8/8/8/8/R3K2R", 1, 0, "e1c1", true},
    {"en passant", "4k3/8/8/3pP3/8/8/8/4K3", 1, 4, "e5d6", true},
    {"en passant without the flag", "4k3/8/8/3pP3/8/8/8/4K3", 1, 0, "e5d6", false},
    {"en passant exposing the king", "8/8/8/K2pP2r/8/8/8/4k3", 1, 4, "e5d6", false},
    {"en passant taking the checker", "7k/8/8/3pP3/4K3/8/8/8", 1, 4, "e5d6", true},
    {"promotion by capture", "3n4/4P3/8/8/8/8/8/k3K3", 1, 0, "e7d8", true},
    {"pinned knight", "4k3/4r3/8/8/8/8/4N3/4K3", 1, 0, "e2c3", false},
    {"king takes a defended rook", "3rk3/8/8/8/8/8/3r4/4K3", 1, 0, "e1d2", false},
    {"king steps back along the checking rank", "4k3/8/8/8/8/8/8/r3K3", 1, 0, "e1f1", false},
    {"no king on the board", "8/8/8/8/8/8/4P3/8", 1, 0, "e2e4", true},
};

TEST(Rules, LegalMoveAndAcceptMoveAgreeWithTheRules)
{
    GameHandle game;
    for (const RuleCase& c : Cases) {
        SCOPED_TRACE(c.name);
        SetUpPosition(game, c.pieces, c.ply, c.epFile);
        MoveXY xy = Xy(c.move);
        EXPECT_EQ(LegalMove(game, &xy) != 0, c.legal);
        EXPECT_EQ(AcceptMove(game, &xy) != 0, c.legal);
        EXPECT_EQ(IGGameGetCM(game), c.legal ? 2 : 1);
    }
}

TEST(Rules, ALegalVerdictIsNotTakenOnceThePositionChanges)
{
    GameHandle game;
    NewGameErase(game);
    ASSERT_EQ(Play(game, {"e2e4"}), 1);
    MoveXY reply = Xy("e7e5");
    ASSERT_NE(LegalMove(game, &reply), 0);
    ASSERT_EQ(PlayMoves(game, -1), 1);
    EXPECT_EQ(AcceptMove(game, &reply), 0) << "white is to move again";

    SetUpPosition(game, "4k3/8/8/8/8/8/8/R3K3", 1);
    MoveXY castle = Xy("e1c1");
    ASSERT_NE(LegalMove(game, &castle), 0);
    SetUpPosition(game, "4k3/8/8/8/8/8/8/RN2K3", 1);
    EXPECT_EQ(AcceptMove(game, &castle), 0) << "a new initial position drops the verdict";
    MoveXY king = Xy("e1e2");
    EXPECT_NE(AcceptMove(game, &king), 0) << "another move is judged on its own";
}

}  // namespace
