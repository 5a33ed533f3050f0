#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "pgn_write/test_game.h"
#include "support/capture.h"

namespace {

TEST(Movetext, NumbersVariationsAnnotationsAndLineBreaks)
{
    const std::string x75(75, 'x'), x56(56, 'x'), x80(80, 'x');
    const struct {
        std::initializer_list<std::string_view> tree;
        std::vector<std::pair<uint32_t, std::string>> comments;
        std::vector<std::pair<uint32_t, uint16_t>> nags;
        const char* result;
        std::string text;
    } cases[] = {
        // numbers follow comments and variations, not glyphs
        {{"e2e4", "e7e5", "g1f3", "b8c6B", "f1b5", "a7a6E", "d7d6", "d2d4E"}, {{3, "Usual"}, {5, "text"}}, {{5, 1}},
         "*", "1. e4 e5 2. Nf3 {Usual} 2... Nc6 (2... d6 3. d4) 3. Bb5 $1 {text} 3... a6 *"},
        // Black's reply to a replaced White move gets its full number, White's move behind a replaced Black move not
        {{"e2e4", "e7e5B", "g1f3E", "c7c5", "g1f3B", "d7d6E", "c2c3", "d7d5E"}, {}, {}, "*",
         "1. e4 e5 (1... c5 2. Nf3 (2. c3 d5) 2... d6) 2. Nf3 *"},
        // the last line of the tree without its MoveLineEnd still closes
        {{"e2e4", "e7e5B", "g1f3E", "c7c5"}, {}, {}, "*", "1. e4 e5 (1... c5) 2. Nf3 *"},
        // annotations of a variation's first move stand inside its brackets
        {{"e2e4", "e7e5B", "g1f3E", "c7c5E"}, {{4, "Sharp"}}, {{4, 2}, {2, 14 | 15 << 8}}, "*",
         "1. e4 e5 $14 $15 (1... c5 $2 {Sharp}) 2. Nf3 *"},
        {{}, {{0, "Only a comment"}}, {{0, 10}}, "1-0", "$10 {Only a comment} 1-0"},
        // a word reaching character 76 stays; the brace goes to the next line
        {{"e2e4E"}, {{0, x75}}, {}, "*", "{" + x75 + "\n} 1. e4 *"},
        // a long word stands alone on an overlong line
        {{"e2e4E"}, {{0, "short " + x80 + " tail"}}, {}, "*", "{short\n" + x80 + "\ntail} 1. e4 *"},
        // runs of blanks collapse, a comment of blanks is empty braces
        {{"e2e4E"}, {{1, "  a   b "}}, {}, "*", "1. e4 {a b} *"},
        // a variation ending in a comment: the bracket sticks to the brace
        // unless it would reach character 77
        {{"e2e4", "e7e5B", "g1f3E", "c7c5E"}, {{4, x56}}, {}, "*", "1. e4 e5 (1... c5 {" + x56 + "}\n) 2. Nf3 *"},
    };
    for (const auto& c : cases) {
        TestGame game;
        game.Tree(c.tree).Tag(TagResult, c.result);
        for (const auto& [entry, text] : c.comments)
            game.Comment(entry, text);
        for (const auto& [entry, word] : c.nags)
            game.Nags(entry, word);
        EXPECT_EQ(game.Movetext(), c.text);
    }
}

TEST(Movetext, SetUpPositionsPromotionAndCheckSigns)
{
    // Black to move in a set-up position.
    TestGame black;
    black.SetUp({{"e1", OV_WHITE_KING}, {"e2", OV_WHITE_PAWN}, {"e8", OV_BLACK_KING}}, 0, 11);
    black.Tree({"e8d7", "e2e4", "d7d6E"}).Comment(0, "Start").Tag(TagResult, "*");
    EXPECT_EQ(black.Movetext(), "{Start} 12... Kd7 13. e4 Kd6 *");
    // A comment on Black's first move gives White's reply its full number, and
    // the first move's own annotations are not repeated in front of it.
    black.Comment(1, "Only").Nags(1, 3);
    EXPECT_EQ(black.Movetext(), "{Start} 12... Kd7 $3 {Only} 13. e4 Kd6 *");
}

TEST(Movetext, VariationsNestedAsDeepAsTheTreeAllows)
{
    // Each line has two moves, and its second move has the next line as its
    // alternative: knights shuffle in the lines, a side knight answers.
    const char* shuffles[] = {"g1f3", "b8c6", "f3g1", "c6b8"};
    const char* answers[] = {"g8h6", "b1a3"};
    TestGame game;
    PgnGame& record = game.game();
    const uint32_t lines = PGN_MAX_MOVES / 2;
    const auto word = [](const char* move) { return static_cast<uint32_t>(Square(move) | Square(move + 2) << 8); };
    for (uint32_t line = 0; line < lines; ++line) {
        record.moves[2 * line] = static_cast<PackedMove>(word(shuffles[line % 4]));
        record.moves[2 * line + 1] = static_cast<PackedMove>(word(answers[line % 2]) | MoveLineEnd |
                                                             (line + 1 < lines ? MoveBranch : 0));
    }
    record.moveCount = 2;
    record.treeCount = PGN_MAX_MOVES;
    game.Tag(TagResult, "*");
    BoxCapture boxes;
    const std::string text = game.Movetext();
    EXPECT_TRUE(boxes.boxes.empty());
    EXPECT_EQ(std::count(text.begin(), text.end(), '('), lines - 1);
    EXPECT_EQ(std::count(text.begin(), text.end(), ')'), lines - 1);
    EXPECT_EQ(text.substr(0, 32) + "..." + text.substr(text.size() - 4), "1. Nf3 Nh6 (1... Nc6 2. Na3 (2. ...)) *");
}

TEST(Movetext, CorruptTreeIsReportedAndTheGameStillEnds)
{
    BoxCapture boxes;
    TestGame atTop;
    atTop.Tree({"e2e4BE"}).Tag(TagResult, "1-0");
    EXPECT_EQ(atTop.Movetext(), "1. e41-0");

    TestGame inVariation;  // the variation stops without its bracket, the caller goes on at column 0
    inVariation.Tree({"e2e4", "e7e5B", "g1f3E", "c7c5", "g1f3BE"}).Tag(TagResult, "*");
    EXPECT_EQ(inVariation.Movetext(), "1. e4 e5 (1... c5 2. Nf32. Nf3 *");

    ASSERT_EQ(boxes.boxes.size(), 2u);
    EXPECT_EQ(boxes.boxes[0].text, "Internal Error!\nMove tree corrupt.");
}

}  // namespace
