#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <string>

#include "pgn_write/test_game.h"

namespace {

TEST(PgnWriteGame, SetUpGameWithCommentsGlyphAndVariation)
{
    TestGame game;
    game.SetUp({{"e1", OV_WHITE_KING}, {"e2", OV_WHITE_PAWN}, {"e8", OV_BLACK_KING}}, 1, 11);
    game.Tree({"e2e4", "e8d7B", "e1f2E", "e8e7", "e1f2E"})
        .Comment(0, "Start")
        .Nags(1, 1)
        .Comment(1, "Best")
        .Tag(TagDate, "1998.08.??")
        .Tag(TagResult, "1-0");
    ASSERT_EQ(game.game().moveCount, 3u);
    ASSERT_EQ(game.game().treeCount, 5u);
    EXPECT_EQ(game.Text(), "[Event \"?\"]\n[Site \"?\"]\n[Date \"1998.08.??\"]\n[Round \"?\"]\n[White \"?\"]\n"
                           "[Black \"?\"]\n[Result \"1-0\"]\n[SetUp \"1\"]\n"
                           "[FEN \"4k3/8/8/8/8/8/4P3/4K3 w - - 0 12\"]\n\n"
                           "{Start} 12. e4 $1 {Best} 12... Kd7 (12... Ke7 13. Kf2) 13. Kf2 1-0\n\n");
}

TEST(PgnWriteGame, TagSectionOrderAndRules)
{
    TestGame game;
    const char* values[PGN_TAG_COUNT] = {
        "Ev", "Si", "2001.2.3", "Ro", "Wh", "Bl", "1/2-1/2", "GM", "FM", "2700", "2500",
        "NOR", "IND", "1:5", "00:00:00", "B90", "Anno", "2", "8/8/8/8/8/8/8/8 w - - 0 1", "Rem"};
    for (int tag = TagEvent; tag <= TagRemark; ++tag)
        game.Tag(static_cast<PgnTagNumber>(tag), values[tag - 1]);
    game.Tree({"e2e4E"});
    // From the standard position: no SetUp and no FEN, whatever the slots hold.
    EXPECT_EQ(game.Text(), "[Event \"Ev\"]\n[Site \"Si\"]\n[Date \"2001.02.03\"]\n[Round \"Ro\"]\n[White \"Wh\"]\n"
                           "[Black \"Bl\"]\n[Result \"1/2-1/2\"]\n[WhiteTitle \"GM\"]\n[WhiteElo \"2700\"]\n"
                           "[WhiteCountry \"NOR\"]\n[WhiteTime \"01:05:00\"]\n[BlackTitle \"FM\"]\n[BlackElo \"2500\"]\n"
                           "[BlackCountry \"IND\"]\n[Annotator \"Anno\"]\n[ECO \"B90\"]\n[Remark \"Rem\"]\n\n"
                           "1. e4 1/2-1/2\n\n");
}

TEST(PgnWriteGame, SetUpNumberAndStartPositionTest)
{
    for (const auto& [slot, number] : {std::pair{" +2 fischer", '2'}, {"", '1'}, {"x2", '1'}}) {
        TestGame game;
        game.game().position->castleBlackLong = 0;  // one byte off the standard start
        game.Tag(TagSetUp, slot).Tag(TagFen, "ignored");
        const std::string text = game.Text();
        EXPECT_NE(text.find(std::string("\n[SetUp \"") + number +
                            "\"]\n[FEN \"rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQk - 0 1\"]\n"),
                  std::string::npos)
            << text;
    }
    TestGame blackToMove;
    blackToMove.game().position->sideToMove = 0;
    EXPECT_NE(blackToMove.Text().find("[SetUp \"1\"]"), std::string::npos);
}

TEST(PgnWriteGame, EmptySlotsAndEmptyResult)
{
    TestGame game;
    game.Tree({"e2e4E"});
    // Empty text slots read "?", the date its template, the result stays empty
    // and the movetext line ends in the separator of the missing result.
    EXPECT_EQ(game.Text(),
              "[Event \"?\"]\n[Site \"?\"]\n[Date \"????.??.??\"]\n[Round \"?\"]\n"
              "[White \"?\"]\n[Black \"?\"]\n[Result \"\"]\n\n1. e4 \n\n");
}

TEST(PgnWriteGame, LongValuesAreWrittenWholeWithoutEscapes)
{
    TestGame game;
    std::string quoted = "He said \"hi\" \\ " + std::string(240, 'v');
    game.Tag(TagEvent, quoted).Tag(TagResult, "*");
    std::memset(game.game().tags[TagSite - 1], 's', PGN_TAG_SIZE);  // no terminator at all
    std::string text = game.Text();
    EXPECT_NE(text.find("[Event \"" + quoted + "\"]\n[Site \"" + std::string(PGN_TAG_SIZE - 1, 's')),
              std::string::npos);
}

TEST(PgnWriteGame, FileAndMemoryGiveTheSameBytes)
{
    TestGame game;
    game.Tree({"e2e4", "e7e5B", "g1f3E", "c7c5E"})
        .Comment(2, "a " + std::string(9000, 'w') + " tail")  // more than the file sink collects
        .Tag(TagResult, "0-1");
    std::string memory = game.Text();

    std::FILE* file = std::tmpfile();
    ASSERT_NE(file, nullptr);
    PgnSink sink(file);
    PgnWriteGame(sink, game.game());
    PgnWriteGame(sink, game.game());
    // Everything has reached the stream when the call returns.
    std::rewind(file);
    std::string written(2 * memory.size() + 1, '\0');
    written.resize(std::fread(written.data(), 1, written.size(), file));
    std::fclose(file);
    EXPECT_EQ(written, memory + memory);
}

}  // namespace
