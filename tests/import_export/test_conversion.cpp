// Stored games into PgnGame records: the tree as the reader flattens it, the header, the limits.
#include <gtest/gtest.h>

#include <string>

#include "pgn/pgn_game.h"
#include "frame/owned_game_buffer.h"
#include "pgn/write/game_to_pgn.h"
#include "siblings/game_driver.h"
#include "store_helpers.h"
#include "support/read_games.h"

namespace {

class Conversion : public ::testing::Test {
protected:
    void SetUp() override { NewGameErase(g); }

    void Play(const int32_t (&move)[4])
    {
        const MoveXY xy{move[0], move[1], move[2], move[3], 0};
        ASSERT_NE(AcceptMove(g, &xy), 0);
    }

    OwnedGameBuffer buffer;
    const OvGameBuffer g = buffer.Get();
    PgnGameStorage storage;
};

// A game read into the buffer and converted back is the record the reader made of its text; the
// corpus round trip brings trees back, here the ends: no move, a set-up position with Black to move.
TEST_F(Conversion, TreesComeBackAsTheReaderFlattensThem)
{
    const char* setUp = "[SetUp \"1\"]\n[FEN \"4k3/8/8/8/8/8/4P3/4K3 b - - 0 7\"]\n\n7... Kd7 8. e4 (8. Kd1) *\n";
    for (const std::string text : {"[White \"a\"]\n\n*\n", setUp}) {
        HGLOBAL block = MemoryText(text);
        ASSERT_EQ(OvMemReadPgnGame(g, block, 0, "NBRQK"), 0);
        GlobalFree(block);
        NewGameRewind(g);
        ASSERT_EQ(OvConvertGameToPgn(g, storage.Game()), 0);
        const ReadGame converted = Capture(*storage.Game()), read = ReadOne(text);
        EXPECT_EQ(converted.Record(), read.Record()) << text;
    }
}

TEST_F(Conversion, HeaderFieldsBecomeTags)
{
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
    const ReadGame tags = Capture(*storage.Game());
    std::string text;
    for (int32_t tag : {TagEvent, TagRemark, TagWhite, TagWhiteElo, TagRound, TagWhiteTime, TagBlackTime, TagDate,
                        TagResult})
        text += tags.Tag(tag) + "|";
    EXPECT_EQ(text, "Club match|Second team|M\xFCller|-5||02:15:00|??:00:00|1998.??.??|1/2-1/2|");
    EXPECT_EQ(tags.resultToken, 3);
}

TEST_F(Conversion, LimitsOfTheRecord)
{
    // Knights out and back, and after the main line an alternative to each move.
    const int32_t shuffle[4][4] = {{7, 1, 6, 3}, {7, 8, 6, 6}, {6, 3, 7, 1}, {6, 6, 7, 8}};
    const int32_t other[4][4] = {{7, 1, 8, 3}, {7, 8, 8, 6}, {6, 3, 7, 5}, {6, 6, 7, 4}};
    for (int32_t i = 0; i < PendingLineCount; ++i)
        Play(shuffle[i % 4]);
    for (int32_t i = PendingLineCount - 1; i >= 0; --i) {
        PlayMoves(g, -1);
        const uint32_t node = IGGameGetMovePtr(g);
        IGMovePutAL(node, IGMoveFirstFreeSubline(node, 1));
        Play(other[i % 4]);
        PlayMoves(g, -1);
    }
    NewGameRewind(g);
    EXPECT_EQ(OvConvertGameToPgn(g, storage.Game()), 2);

    NewGameErase(g);
    for (int32_t i = 0; i < PGN_MAX_MOVES - 1; ++i)
        Play(shuffle[i % 4]);
    NewGameRewind(g);
    EXPECT_EQ(OvConvertGameToPgn(g, storage.Game()), 0);
    EXPECT_EQ(storage.Game()->moveCount, uint32_t{PGN_MAX_MOVES - 1});
    PlayMoves(g, PGN_MAX_MOVES);
    Play(shuffle[3]);
    NewGameRewind(g);
    EXPECT_EQ(OvConvertGameToPgn(g, storage.Game()), 2);
    EXPECT_EQ(OvCreatePgnGame(g, 0), nullptr);
}

}  // namespace
