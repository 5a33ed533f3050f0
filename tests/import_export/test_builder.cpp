// The game builder against the real store: comment lines, the initial position, the branch stack.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "chess/position.h"
#include "pgn/pgn_game.h"
#include "pgn/read/game_builder.h"
#include "frame/owned_game_buffer.h"
#include "siblings/game_driver.h"
#include "support/capture.h"

namespace {

std::vector<std::string> CommentLines(uint32_t node)
{
    char block[OvgLongCommentBlockSize];
    std::vector<std::string> lines;
    const char* line = block + sizeof(uint16_t);
    for (int32_t i = GetLComment(node, block); i > 0; --i, line += lines.back().size() + 1)
        lines.emplace_back(line);
    return lines;
}

// A record laid out by hand: a main line of knight moves out and back, each
// with a one-move alternative behind the main line, latest first.
void KnightShuffle(PgnGame* pgn, uint32_t length)
{
    ClearPgnGame(pgn);
    const PackedMove out[4] = {6 | 21 << 8, 62 | 45 << 8, 21 | 6 << 8, 45 | 62 << 8};     // Nf3 Nf6 Ng1 Ng8
    const PackedMove other[4] = {6 | 23 << 8, 62 | 47 << 8, 21 | 38 << 8, 45 | 30 << 8};  // Nh3 Nh6 Ng5 Ng4
    for (uint32_t i = 0; i < length; ++i) {
        pgn->moves[i] = out[i % 4] | MoveBranch;
        pgn->moves[length + i] = other[(length - 1 - i) % 4] | MoveLineEnd;
    }
    pgn->moves[length - 1] |= MoveLineEnd;
    pgn->moveCount = length;
    pgn->treeCount = 2 * length;
}

class Builder : public ::testing::Test {
protected:
    void SetUp() override { NewGameErase(g); }

    OwnedGameBuffer buffer;
    const OvGameBuffer g = buffer.Get();
    PgnGameStorage storage;
};

TEST_F(Builder, CommentTooLongForTheStoreKeepsTheOneBefore)
{
    const MoveXY e4{5, 2, 5, 4, 0};
    AcceptMove(g, &e4);
    const uint32_t node = IGGameGetMovePtr(g);
    // Lines of 30 characters; a blank where a line is cut stays at its end.
    const std::string before = std::string(25, 'x') + "  " + std::string(10, 'y');
    EXPECT_EQ(PutPgnComment(before.c_str(), node), 0);
    EXPECT_EQ(CommentLines(node), (std::vector<std::string>{std::string(25, 'x') + " ", std::string(10, 'y')}));
    std::string tooLong;
    while (tooLong.size() < CommentBlockSize)
        tooLong += "word ";
    TraceCapture trace;
    EXPECT_EQ(PutPgnComment(tooLong.c_str(), node), 1);
    EXPECT_EQ(CommentLines(node).size(), 2u);
    EXPECT_EQ(trace.lines.size(), 1u);
}

TEST_F(Builder, SetUpPositionCarriesPlyCastlingAndEnPassant)
{
    sPosition position = StartPosition;
    position.sideToMove = 0;
    position.board[12] = 0;  // e2-e4 was played
    position.board[28] = OV_WHITE_PAWN;
    position.epSquare = 20;
    position.castleBlackLong = 0;
    position.board[7] = 0;  // no rook on h1: the store drops White's short castling
    PutPgnStartPosition(position, 4, g);
    BoardRecord board;
    EXPECT_EQ(GetInitialPosition(g, &board), 2);
    EXPECT_EQ((std::vector<int32_t>{board.ply, board.epFile, board.castling}),
              (std::vector<int32_t>{10, 5, DrvCastleWhiteLong | DrvCastleBlackShort}));
    position.sideToMove = 1;
    PutPgnStartPosition(position, 4, g);
    GetInitialPosition(g, &board);
    EXPECT_EQ(board.ply, 9);
}

TEST_F(Builder, BranchesBeyondTheStackLoseOnlyTheirSideLines)
{
    KnightShuffle(storage.Game(), 600);
    TraceCapture trace;
    EXPECT_EQ(BuildPgnGame(*storage.Game(), g), 0);
    EXPECT_EQ(trace.lines.size(), 600u - BuilderBranchStackSize);

    PgnGameStorage converted;
    NewGameRewind(g);
    ASSERT_EQ(OvConvertGameToPgn(g, converted.Game()), 0);
    EXPECT_EQ(converted.Game()->moveCount, 600u);
    EXPECT_EQ(converted.Game()->treeCount, 600u + BuilderBranchStackSize);
    // The first side line built is that of the last move that had room.
    EXPECT_EQ(converted.Game()->moves[600], storage.Game()->moves[1200 - BuilderBranchStackSize]);
}

TEST_F(Builder, CorruptTreeStopsWithABox)
{
    KnightShuffle(storage.Game(), 4);
    storage.Game()->treeCount = 6;  // the side lines of the first two moves are missing
    BoxCapture boxes;
    EXPECT_EQ(BuildPgnGame(*storage.Game(), g), 1);
    ASSERT_EQ(boxes.boxes.size(), 1u);
    EXPECT_NE(boxes.boxes[0].text.find("Move tree corrupt."), std::string::npos);
}

}  // namespace
