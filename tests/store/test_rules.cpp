// The store's own legality test on set-up positions, and what special moves do to the board.
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
    {"short castling", "r3k2r/8/8/8/8/8/8/R3K2R", 1, 0, "e1g1", true},
    {"castling through an attacked square", "r3kr2/8/8/8/8/8/8/R3K2R", 1, 0, "e1g1", false},
    {"the other wing stays open", "r3kr2/8/8/8/8/8/8/R3K2R", 1, 0, "e1c1", true},
    {"castling out of check", "4r1k1/8/8/8/8/8/8/R3K2R", 1, 0, "e1c1", false},
    {"attacked b-file square does not stop long castling", "kr6/8/8/8/8/8/8/R3K2R", 1, 0, "e1c1", true},
    {"castling over a piece", "4k3/8/8/8/8/8/8/RN2K2R", 1, 0, "e1c1", false},
    {"en passant", "4k3/8/8/3pP3/8/8/8/4K3", 1, 4, "e5d6", true},
    {"en passant without the flag", "4k3/8/8/3pP3/8/8/8/4K3", 1, 0, "e5d6", false},
    {"en passant on the other file", "4k3/8/8/3pPp2/8/8/8/4K3", 1, 4, "e5f6", false},
    {"en passant exposing the king", "8/8/8/K2pP2r/8/8/8/4k3", 1, 4, "e5d6", false},
    {"en passant opening a diagonal to the king", "7k/8/4b3/3pP3/2K5/8/8/8", 1, 4, "e5d6", false},
    {"en passant taking the checker", "7k/8/8/3pP3/4K3/8/8/8", 1, 4, "e5d6", true},
    {"promotion by capture", "3n4/4P3/8/8/8/8/8/k3K3", 1, 0, "e7d8", true},
    {"pinned knight", "4k3/4r3/8/8/8/8/4N3/4K3", 1, 0, "e2c3", false},
    {"pinned rook takes the pinner", "4k3/4r3/8/8/8/8/4R3/4K3", 1, 0, "e2e7", true},
    {"king takes an undefended rook", "4k3/8/8/8/8/8/3r4/4K3", 1, 0, "e1d2", true},
    {"king takes a defended rook", "3rk3/8/8/8/8/8/3r4/4K3", 1, 0, "e1d2", false},
    {"king steps back along the checking rank", "4k3/8/8/8/8/8/8/r3K3", 1, 0, "e1f1", false},
    {"check blocked", "4k3/4r3/8/8/8/8/8/2B1K3", 1, 0, "c1e3", true},
    {"pawn double step over a man", "4k3/8/8/8/8/4n3/4P3/4K3", 1, 0, "e2e4", false},
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

uint8_t At(uint32_t game, const char* square)
{
    return IGGameGetBoard(game)->squares[BoardIndex(square[0] - 'a', square[1] - '1')];
}

TEST(Rules, SpecialMovesChangeTheBoardAsChessDoes)
{
    GameHandle game;
    SetUpPosition(game, "r3k2r/8/8/3pP3/8/8/8/R3K2R", 1, 4);
    EXPECT_EQ(Play(game, {"e5d6"}), 1);
    EXPECT_EQ(At(game, "d5"), DrvEmpty) << "the pawn taken en passant leaves";
    EXPECT_EQ(At(game, "d6"), DrvWhitePawn);
    EXPECT_EQ(Play(game, {"e8c8"}), 1);
    EXPECT_EQ(At(game, "d8"), DrvBlackRook);
    EXPECT_EQ(At(game, "a8"), DrvEmpty);
    EXPECT_EQ(IGGameGetBoard(game)->castling, DrvCastleWhiteShort | DrvCastleWhiteLong);
    EXPECT_EQ(Play(game, {"h1h2"}), 1);
    EXPECT_EQ(IGGameGetBoard(game)->castling, DrvCastleWhiteLong) << "a rook move ends its wing";
    EXPECT_EQ(IGGameGetBoard(game)->ply, 4);
    EXPECT_EQ(IGGameGetBoard(game)->sideToMove, 1);

    // LegalMove marks a promotion with the queen; the fifth value chooses the piece.
    SetUpPosition(game, "8/4P3/8/8/8/8/8/k3K3", 1);
    MoveXY xy = Xy("e7e8");
    ASSERT_NE(LegalMove(game, &xy), 0);
    EXPECT_EQ(xy.promotion, DrvWhiteQueen);
    xy.promotion = DrvWhiteKnight;
    ASSERT_NE(AcceptMove(game, &xy), 0);
    EXPECT_EQ(At(game, "e8"), DrvWhiteKnight);
    EXPECT_EQ(MoveText(IGGameGetMovePtr(game)), "e7e8n");

    // The en passant file is set only when a pawn can take.
    NewGameErase(game);
    ASSERT_EQ(Play(game, {"e2e4"}), 1);
    EXPECT_EQ(IGGameGetBoard(game)->epFile, 0);
    ASSERT_EQ(Play(game, {"d7d5", "e4e5", "f7f5"}), 3);
    EXPECT_EQ(IGGameGetBoard(game)->epFile, 6);
    EXPECT_EQ(Play(game, {"e5f6"}), 1);

    // Castling rights follow the men.
    BoardRecord board = BoardFromPieces("4k2r/8/8/8/8/8/8/R3K3");
    EXPECT_EQ(CastlingRights(&board), DrvCastleWhiteLong | DrvCastleBlackShort);
    EXPECT_EQ(CastlingRights(nullptr), 0);
    EXPECT_EQ(IGNewBoard(nullptr), 0);
}

}  // namespace
