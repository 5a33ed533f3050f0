#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "pgn_write/test_game.h"

namespace {

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

}  // namespace
