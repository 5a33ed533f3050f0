// The game builder against the real store: what reaches the store's tree,
// comments, glyphs, status flags and initial position.
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "chess/position.h"
#include "pgn/pgn_game.h"
#include "pgn/read/game_builder.h"
#include "pgn/read/owned_game_buffer.h"
#include "pgn_snapshot.h"
#include "siblings/game_driver.h"
#include "support/capture.h"

namespace {

class Builder : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_NE(game.Get(), 0u);
        NewGameErase(game.Get());
    }

    // The lines of the long comment of `node`.
    static std::vector<std::string> CommentLines(uint32_t node)
    {
        char block[OvgLongCommentBlockSize];
        const int32_t count = GetLComment(node, block);
        std::vector<std::string> lines;
        const char* line = block + sizeof(uint16_t);
        for (int32_t i = 0; i < count; ++i) {
            lines.emplace_back(line);
            line += lines.back().size() + 1;
        }
        return lines;
    }

    uint32_t FirstMoveNode()
    {
        const MoveXY e4{5, 2, 5, 4, 0};
        AcceptMove(game.Get(), &e4);
        return IGGameGetMovePtr(game.Get());
    }

    OwnedGameBuffer game;
};

TEST_F(Builder, CommentsAreCutIntoLinesAtBlanks)
{
    const std::string thirty(30, 'a');
    const struct {
        std::string text;
        std::vector<std::string> lines;
    } cases[] = {
        {thirty, {thirty}},
        {thirty + " b", {thirty + " ", "b"}},
        {thirty + "bcdef", {thirty, "bcdef"}},
        {"one two  three", {"one two  three"}},
        {std::string(25, 'x') + " " + std::string(10, 'y'), {std::string(25, 'x') + " ", std::string(10, 'y')}},
        {"   " + std::string(40, 'z'), {"   " + std::string(27, 'z'), std::string(13, 'z')}},
        {thirty + "   ", {thirty}},
    };
    const uint32_t node = FirstMoveNode();
    for (const auto& c : cases) {
        EXPECT_EQ(PutPgnComment(c.text.c_str(), node), 0);
        EXPECT_EQ(CommentLines(node), c.lines) << c.text;
    }
}

TEST_F(Builder, CommentTooLongForTheBlockIsSkippedWhole)
{
    const uint32_t node = FirstMoveNode();
    ASSERT_EQ(PutPgnComment("kept", node), 0);
    std::string text;
    while (text.size() < CommentBlockSize)
        text += "word ";
    TraceCapture trace;
    EXPECT_EQ(PutPgnComment(text.c_str(), node), 1);
    EXPECT_EQ(CommentLines(node), std::vector<std::string>{"kept"});
    ASSERT_EQ(trace.lines.size(), 1u);
    EXPECT_NE(trace.lines[0].find("comment too long, skipped."), std::string::npos);
}

TEST_F(Builder, GlyphsBecomeSymbolsOrNumbersWithoutSeparator)
{
    const struct {
        uint16_t nags;
        const char* text;
    } cases[] = {
        {1 | 14 << 8, "!14"}, {3, "!!"}, {14 | 15 << 8, "1415"}, {5 | 6 << 8, "!?" "?!"}, {255, "255"},
    };
    const uint32_t node = FirstMoveNode();
    for (const auto& c : cases) {
        EXPECT_EQ(PutPgnGlyphs(c.nags, node), 0);
        char text[OvgTextSize] = "";
        IGMoveGetSComment(node, text);
        EXPECT_STREQ(text, c.text);
    }
    EXPECT_EQ(PutPgnGlyphs(0, node), 1);
}

TEST_F(Builder, SetUpPositionCarriesPlyCastlingAndEnPassant)
{
    sPosition position = StartPosition;
    position.sideToMove = 0;
    position.board[12] = 0;  // e2 to e4
    position.board[28] = OV_WHITE_PAWN;
    position.epSquare = 20;
    position.castleBlackLong = 0;
    position.board[7] = 0;  // no rook on h1: the store drops white's short castling
    PutPgnStartPosition(position, 4, game.Get());

    BoardRecord board;
    EXPECT_EQ(GetInitialPosition(game.Get(), &board), 2);
    EXPECT_EQ(board.ply, 10);
    EXPECT_EQ(board.epFile, 5);
    EXPECT_EQ(board.castling, DrvCastleWhiteLong | DrvCastleBlackShort);
    EXPECT_EQ(board.squares[BoardIndex(4, 3)], DrvWhitePawn);

    position.sideToMove = 1;
    PutPgnStartPosition(position, 4, game.Get());
    GetInitialPosition(game.Get(), &board);
    EXPECT_EQ(board.ply, 9);
}

// A record laid out by hand: a main line of knight moves, each with a
// one-move alternative, so that every main line move has a pending branch.
void KnightShuffle(PgnGame* pgn, uint32_t length)
{
    ClearPgnGame(pgn);
    const PackedMove out[4] = {6 | 21 << 8, 62 | 45 << 8, 21 | 6 << 8, 45 | 62 << 8};     // Ng1f3 Ng8f6 Nf3g1 Nf6g8
    const PackedMove other[4] = {6 | 23 << 8, 62 | 47 << 8, 21 | 38 << 8, 45 | 30 << 8};  // Nh3 Nh6 Ng5 Ng4
    for (uint32_t i = 0; i < length; ++i)
        pgn->moves[i] = out[i % 4] | MoveBranch;
    pgn->moves[length - 1] |= MoveLineEnd;
    for (uint32_t i = 0; i < length; ++i)
        pgn->moves[length + i] = other[(length - 1 - i) % 4] | MoveLineEnd;
    pgn->moveCount = length;
    pgn->treeCount = 2 * length;
}

TEST_F(Builder, BranchesBeyondTheStackLoseOnlyTheirSideLines)
{
    PgnGameStorage storage;
    KnightShuffle(storage.Game(), 600);
    TraceCapture trace;
    EXPECT_EQ(BuildPgnGame(*storage.Game(), game.Get()), 0);
    EXPECT_EQ(trace.lines.size(), 600u - BuilderBranchStackSize);

    PgnGameStorage converted;
    NewGameRewind(game.Get());
    ASSERT_EQ(OvConvertGameToPgn(game.Get(), converted.Game()), 0);
    EXPECT_EQ(converted.Game()->moveCount, 600u);
    EXPECT_EQ(converted.Game()->treeCount, 600u + BuilderBranchStackSize);
    EXPECT_EQ(converted.Game()->moves[600] & 0x3F3F, storage.Game()->moves[600 + 600 - BuilderBranchStackSize] & 0x3F3F);
}

TEST_F(Builder, CorruptTreeStopsWithABox)
{
    PgnGameStorage storage;
    KnightShuffle(storage.Game(), 4);
    storage.Game()->treeCount = 6;  // the alternatives of the first two moves are missing
    BoxCapture boxes;
    EXPECT_EQ(BuildPgnGame(*storage.Game(), game.Get()), 1);
    ASSERT_EQ(boxes.boxes.size(), 1u);
    EXPECT_NE(boxes.boxes[0].text.find("Move tree corrupt."), std::string::npos);
}

TEST_F(Builder, HeaderStatusAndResultFromTheRecord)
{
    HGLOBAL text = MemoryText(
        "[Event \"Club match\"]\n[White \"M\xFCller\"]\n[WhiteElo \"2400\"]\n[Round \"3\"]\n"
        "[Date \"1998.08.??\"]\n[WhiteTime \"1:30\"]\n[Result \"*\"]\n\n"
        "{Before} 1. e4 $1 e5 (1... c5) *\n");
    ASSERT_EQ(OvMemReadPgnGame(game.Get(), text, 0, "NBRQK"), 0);
    GlobalFree(text);

    const OvGameBuffer g = game.Get();
    EXPECT_STREQ(IGGameGetPlace(g, nullptr), "Club match");
    EXPECT_STREQ(IGGameGetPlayer(g, 0, nullptr), "M\x81ller");
    EXPECT_EQ(IGGameGetElo(g, 0), 2400);
    EXPECT_EQ(IGGameGetElo(g, 1), 0);
    EXPECT_EQ(IGGameGetRound(g), 3);
    EXPECT_EQ(IGGameGetTime(g, 0), 90);
    const int32_t* date = IGGameGetDate(g, nullptr);
    EXPECT_EQ(date[0], 1998);
    EXPECT_EQ(date[1], 8);
    EXPECT_EQ(date[2], 0);
    EXPECT_EQ(IGGameGetResult(g, 0), 0);
    EXPECT_EQ(IGGameGetStatus(g, OvgStatusAnnotated), 1);
    EXPECT_EQ(IGGameGetStatus(g, OvgStatusVariations), 1);
    EXPECT_EQ(IGGameGetStatus(g, OvgStatusSetUp), 0);
    EXPECT_EQ(CommentLines(IGGameGetFirstMove(g)), std::vector<std::string>{"Before"});
}

}  // namespace
