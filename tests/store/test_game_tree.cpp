// Game buffers: the move tree with side lines and comments, walking it,
// header fields, status flags, set-up positions and refused handles.
#include <cstring>

#include "tests/store/game_samples.h"

namespace {

// 1. e4 e5 2. Nf3 (2. f4 exf4 (2... d5)) 2... Nc6, built as the game builder
// builds: the main line first, then each side line after a walk back.
void BuildTree(uint32_t game)
{
    NewGameErase(game);
    ASSERT_EQ(Play(game, {"e2e4", "e7e5", "g1f3", "b8c6"}), 4);
    ASSERT_EQ(PlayMoves(game, -2), 2);
    uint32_t node = IGGameGetMovePtr(game);
    ASSERT_EQ(IGMovePutAL(node, IGMoveFirstFreeSubline(node, 1)), 1);
    ASSERT_EQ(Play(game, {"f2f4", "e5f4"}), 2);
    ASSERT_EQ(PlayMoves(game, -1), 1);
    node = IGGameGetMovePtr(game);
    ASSERT_EQ(IGMovePutAL(node, IGMoveFirstFreeSubline(node, 1)), 1);
    ASSERT_EQ(Play(game, {"d7d5"}), 1);
}

TEST(GameTree, AcceptMoveFollowsAnExistingContinuationUnlessArmed)
{
    GameHandle game;
    NewGameErase(game);
    ASSERT_EQ(Play(game, {"e2e4", "e7e5"}), 2);
    PlayMoves(game, -2);
    ASSERT_EQ(Play(game, {"e2e4", "c7c5"}), 2);
    EXPECT_EQ(DescribeTree(game), "e2e4 e7e5 (c7c5 ) ") << "1. e4 was followed, not doubled";
    PlayMoves(game, -2);
    const uint32_t root = IGGameGetMovePtr(game);
    EXPECT_EQ(IGMoveFirstFreeSubline(root, 3), 3u);
    ASSERT_EQ(IGMovePutAL(root, 1), 1);
    ASSERT_EQ(Play(game, {"e2e4"}), 1);
    EXPECT_EQ(DescribeTree(game), "e2e4 (e2e4 ) e7e5 (c7c5 ) ") << "an armed new subline takes even the same move";
    EXPECT_EQ(IGMovePutAL(IGMoveGetNEXT(root), 1), 0) << "only the current node can be armed";
}

TEST(GameTree, CommentsKeepTheirLinesAndNeverRunPastTheBlock)
{
    GameHandle game;
    BuildTree(game);
    const uint32_t root = IGGameGetFirstMove(game);
    const uint32_t e4 = IGMoveGetNEXT(root);
    char text[OvgTextSize];
    std::vector<char> block(OvgLongCommentBlockSize + 64, '#');
    ASSERT_EQ(IGMovePutSComment(e4, "!?"), 1);
    EXPECT_EQ(IGMovePutSComment(e4, ""), 1);
    EXPECT_EQ(IGMoveGetSComment(e4, text), 0) << "an empty glyph text removes it";
    ASSERT_EQ(IGMovePutLComment(e4, "x", 1), 1);
    ASSERT_EQ(IGMovePutLComment(e4, nullptr, 0), 1);
    EXPECT_EQ(GetLComment(e4, block.data()), 0);

    std::string lines;
    for (int i = 0; i < 400; ++i)
        lines += "twenty characters..." + std::string(1, '\0');
    ASSERT_EQ(IGMovePutLComment(e4, lines.data(), 400), 1);
    EXPECT_EQ(GetLComment(e4, block.data()), (OvgLongCommentBlockSize - 2) / 21);
    for (size_t i = OvgLongCommentBlockSize; i < block.size(); ++i)
        ASSERT_EQ(block[i], '#') << "written past the block at " << i;
    const std::string huge(70000, 'x');
    EXPECT_EQ(IGMovePutLComment(e4, huge.c_str(), 1), 0) << "over 60000 bytes is refused";
}

TEST(GameHeader, TextsAreCutSidesCheckedAndErasingClearsEverything)
{
    GameHandle game;
    NewGameErase(game);
    char copy[OvgTextSize];
    ASSERT_EQ(IGGamePutRemark(game, "r\x84mark"), 1);
    EXPECT_STREQ(IGGameGetRemark(game, copy), "r\x84mark");
    for (auto put : {IGGamePutPlayer, IGGamePutCountry, IGGamePutTitle})
        EXPECT_EQ(put(game, 2, "x"), 0);
    EXPECT_EQ(IGGameGetTitle(game, -1, nullptr), nullptr);
    IGGamePutPlayer(game, 0, std::string(300, 'n').c_str());
    EXPECT_EQ(std::strlen(IGGameGetPlayer(game, 0, nullptr)), 255u);
    IGGamePutPlayer(game, 0, nullptr);
    EXPECT_STREQ(IGGameGetPlayer(game, 0, nullptr), "");

    EXPECT_EQ(IGGamePutStatus(game, 0, 5) + IGGamePutStatus(game, 2, 5) + IGGamePutStatus(game, 7, 5), 3);
    EXPECT_EQ(IGGameGetStatus(game, 7), 1) << "any non-zero value sets a flag";
    EXPECT_EQ(IGGamePutStatus(game, 7, 0), 1);
    EXPECT_EQ(IGGameGetStatus(game, 7) + IGGameGetStatus(game, -1) + IGGamePutStatus(game, 8, 1), 0);

    IGGamePutPlace(game, "Geneva");
    IGGamePutResult(game, 3, 0);
    const int32_t date[3] = {1998, 8, 0};
    IGGamePutDate(game, date);
    IGGamePutSourceLoadnumber(game, 42);
    EXPECT_EQ(IGGameGetSourceLoadnumber(game), 42);
    NewGameErase(game);
    EXPECT_STREQ(IGGameGetPlace(game, nullptr), "");
    EXPECT_EQ(IGGameGetResult(game, 0) + IGGameGetSourceLoadnumber(game) + IGGameGetDate(game, nullptr)[0] +
                  IGGameGetStatus(game, 0) + IGGameGetStatus(game, 2), 0);
}

TEST(GameBoard, SetUpPositionBecomesTheInitialPosition)
{
    GameHandle game;
    SetUpPosition(game, "4k3/8/8/8/8/8/4P3/4K3", 10);
    EXPECT_EQ(IGGameGetStatus(game, OvgStatusSetUp), 1);
    BoardRecord initial{};
    EXPECT_EQ(GetInitialPosition(game, &initial), 2);
    EXPECT_EQ(initial.sideToMove, 1) << "an even ply is black to move";
    EXPECT_EQ(initial.ply, 10);
    EXPECT_EQ(Play(game, {"e2e4"}), 0) << "black is to move";
    EXPECT_EQ(Play(game, {"e8d7", "e2e4"}), 2);

    BoardRecord start{};
    IGNewBoard(&start);
    ASSERT_EQ(BoardToInitialPosition(game, &start, 0xF0, 0, 1), 1);
    EXPECT_EQ(IGGameGetStatus(game, OvgStatusSetUp), 0) << "the standard start is no set-up";
    EXPECT_EQ(IGGameGetFirstMove(game), 0u) << "the moves went with the old position";
    EXPECT_EQ(BoardToInitialPosition(game, &start, 0xF0, 0, 0) + BoardToInitialPosition(game, nullptr, 0, 0, 1), 0);
}

TEST(Handles, InvalidAndStaleHandlesAreRefused)
{
    uint32_t closed = IGGameOpenGame();
    NewGameErase(closed);
    Play(closed, {"e2e4"});
    const uint32_t closedMove = IGGameGetMovePtr(closed);
    ASSERT_EQ(IGGameCloseGame(closed), 1);
    EXPECT_EQ(IGGameCloseGame(closed), 0);
    GameHandle reused;  // may take the freed slot
    // The calls that bad handles do not already reach through the exports.
    for (uint32_t game : {closed, 0xFFFFFFFFu}) {
        MoveXY xy = Xy("e2e4");
        EXPECT_EQ(NewGameErase(game) + IGGameGetCM(game) + IGGamePutPlayer(game, 0, "x"), 0);
        EXPECT_EQ(LegalMove(game, &xy) + AcceptMove(game, &xy) + PatExactPosition(game), 0);
    }
    MoveXY xy{};
    EXPECT_EQ(IGMoveGetXY(closedMove, &xy), 0);
    EXPECT_EQ(IGMovePutSComment(0xFFFFFFFFu, "!"), 0);

    GameHandle game;
    NewGameErase(game);
    Play(game, {"e2e4", "e7e5"});
    const uint32_t e5 = IGGameGetMovePtr(game);
    NewGameErase(game);
    EXPECT_EQ(IGMoveGetXY(e5, &xy), 0) << "a move of an erased tree is stale";
    EXPECT_EQ(IGMovePutLComment(e5, "x", 1), 0);
    EXPECT_EQ(LegalMove(game, nullptr), 0);
    EXPECT_EQ(IGGameGetFirstMove(game), 0u) << "a game without moves has no root to show";
}

}  // namespace
