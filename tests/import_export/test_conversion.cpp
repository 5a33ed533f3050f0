// Stored games into PgnGame records: the header as tags, the move tree
// flattened, and the limits of a record.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "pgn/pgn_game.h"
#include "pgn/read/owned_game_buffer.h"
#include "pgn/write/game_to_pgn.h"
#include "pgn_snapshot.h"
#include "siblings/game_driver.h"
#include "support/capture.h"

namespace {

class Conversion : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_NE(game.Get(), 0u);
        ASSERT_TRUE(storage.Allocated());
        NewGameErase(game.Get());
    }

    // Reads `text` into the buffer and converts it back.
    GameSnapshot RoundTrip(const std::string& text)
    {
        HGLOBAL block = MemoryText(text);
        EXPECT_EQ(OvMemReadPgnGame(game.Get(), block, 0, "NBRQK"), 0);
        GlobalFree(block);
        NewGameRewind(game.Get());
        EXPECT_EQ(OvConvertGameToPgn(game.Get(), storage.Game()), 0);
        return Snapshot(*storage.Game());
    }

    void Play(int32_t fromFile, int32_t fromRank, int32_t toFile, int32_t toRank)
    {
        MoveXY xy{fromFile, fromRank, toFile, toRank, 0};
        ASSERT_NE(LegalMove(game.Get(), &xy), 0);
        ASSERT_NE(AcceptMove(game.Get(), &xy), 0);
    }

    OwnedGameBuffer game;
    PgnGameStorage storage;
};

TEST_F(Conversion, SideLinesComeBackInTheFlatTreeOfTheReader)
{
    const std::string text =
        "[White \"a\"]\n\n{Root} 1. e4 $14 e5 (1... c5 {Sicilian} 2. Nf3 (2. c3 d5) 2... d6) (1... e6 $2 $16) "
        "2. Nf3 Nc6 3. Bb5 (3. Bc4 Bc5 (3... Nf6)) 3... a6 1-0\n";
    const GameSnapshot read = ReadPgnText(text).at(0);
    const GameSnapshot converted = RoundTrip(text);
    EXPECT_EQ(converted.moves, read.moves);
    EXPECT_EQ(converted.moveCount, read.moveCount);
    EXPECT_EQ(converted.treeCount, read.treeCount);
    EXPECT_EQ(converted.nags, read.nags);
    EXPECT_EQ(converted.comments, read.comments);
    EXPECT_EQ(converted.Tag(TagResult), "1-0");
    EXPECT_EQ(converted.resultToken, 1);
}

TEST_F(Conversion, ShortGamesAndSetUpPositions)
{
    GameSnapshot empty = RoundTrip("[White \"a\"]\n\n*\n");
    EXPECT_EQ(empty.moveCount, 0u);
    EXPECT_EQ(empty.Tag(TagResult), "*");

    GameSnapshot one = RoundTrip("[White \"a\"]\n\n1. d4 *\n");
    ASSERT_EQ(one.moves.size(), 1u);
    EXPECT_EQ(one.moves[0] & MoveLineEnd, MoveLineEnd);
    EXPECT_EQ(one.moveCount, 1u);
    EXPECT_EQ(one.treeCount, 0u);

    const std::string setUp = "[SetUp \"1\"]\n[FEN \"4k3/8/8/8/8/8/4P3/4K3 b - - 0 7\"]\n\n7... Kd7 8. e4 *\n";
    const GameSnapshot read = ReadPgnText(setUp).at(0);
    GameSnapshot converted = RoundTrip(setUp);
    EXPECT_EQ(converted.firstMoveNumber, 6u);
    EXPECT_EQ(std::memcmp(&converted.position, &read.position, sizeof(sPosition)), 0);
    EXPECT_EQ(converted.moves, read.moves);
}

TEST_F(Conversion, HeaderFieldsBecomeTags)
{
    const OvGameBuffer g = game.Get();
    IGGamePutPlace(g, "Club match|Second team");
    IGGamePutRemark(g, "lost");
    IGGamePutPlayer(g, 0, "M\x81ller");
    IGGamePutElo(g, 0, -5);
    IGGamePutTime(g, 0, 135);
    IGGamePutTime(g, 1, 6000);
    const int32_t date[3] = {1998, 0, 0};
    IGGamePutDate(g, date);
    IGGamePutResult(g, 2, 0);
    ASSERT_EQ(OvConvertGameToPgn(g, storage.Game()), 0);
    const GameSnapshot tags = Snapshot(*storage.Game());
    EXPECT_EQ(tags.Tag(TagEvent), "Club match");
    EXPECT_EQ(tags.Tag(TagRemark), "Second team");
    EXPECT_EQ(tags.Tag(TagWhite), "M\xFCller");
    EXPECT_EQ(tags.Tag(TagWhiteElo), "-5");
    EXPECT_EQ(tags.Tag(TagBlackElo), "");
    EXPECT_EQ(tags.Tag(TagRound), "");
    EXPECT_EQ(tags.Tag(TagWhiteTime), "02:15:00");
    EXPECT_EQ(tags.Tag(TagBlackTime), "??:00:00");
    EXPECT_EQ(tags.Tag(TagDate), "1998.??.??");
    EXPECT_EQ(tags.Tag(TagResult), "1/2-1/2");
    EXPECT_EQ(tags.resultToken, 3);
}

TEST_F(Conversion, TooManyPendingAlternativesOrEntriesMakeTheRecordUnusable)
{
    // Knights out and back; after the main line, an alternative for each move.
    const int32_t shuffle[4][4] = {{7, 1, 6, 3}, {7, 8, 6, 6}, {6, 3, 7, 1}, {6, 6, 7, 8}};
    const int32_t other[4][4] = {{7, 1, 8, 3}, {7, 8, 8, 6}, {6, 3, 7, 5}, {6, 6, 7, 4}};
    const int32_t length = PendingLineCount;
    for (int32_t i = 0; i < length; ++i)
        Play(shuffle[i % 4][0], shuffle[i % 4][1], shuffle[i % 4][2], shuffle[i % 4][3]);
    for (int32_t i = length - 1; i >= 0; --i) {
        PlayMoves(game.Get(), -1);
        const uint32_t node = IGGameGetMovePtr(game.Get());
        IGMovePutAL(node, IGMoveFirstFreeSubline(node, 1));
        Play(other[i % 4][0], other[i % 4][1], other[i % 4][2], other[i % 4][3]);
        PlayMoves(game.Get(), -1);
    }
    NewGameRewind(game.Get());
    EXPECT_EQ(OvConvertGameToPgn(game.Get(), storage.Game()), 2);

    NewGameErase(game.Get());
    for (int32_t i = 0; i < PGN_MAX_MOVES - 1; ++i)
        Play(shuffle[i % 4][0], shuffle[i % 4][1], shuffle[i % 4][2], shuffle[i % 4][3]);
    NewGameRewind(game.Get());
    EXPECT_EQ(OvConvertGameToPgn(game.Get(), storage.Game()), 0);
    EXPECT_EQ(storage.Game()->moveCount, uint32_t{PGN_MAX_MOVES - 1});
    PlayMoves(game.Get(), PGN_MAX_MOVES);
    Play(shuffle[3][0], shuffle[3][1], shuffle[3][2], shuffle[3][3]);
    NewGameRewind(game.Get());
    EXPECT_EQ(OvConvertGameToPgn(game.Get(), storage.Game()), 2);
}

TEST_F(Conversion, BadRecordsAndBuffersAreRefused)
{
    PgnGame unset{};
    EXPECT_EQ(OvConvertGameToPgn(game.Get(), nullptr), 1);
    EXPECT_EQ(OvConvertGameToPgn(game.Get(), &unset), 1);
    EXPECT_EQ(OvConvertGameToPgn(0, storage.Game()), 2);
    EXPECT_EQ(OvCreatePgnGame(0, 0), nullptr);
}

}  // namespace
