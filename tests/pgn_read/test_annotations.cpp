// Glyphs, comments and brackets as the game loop stores them.
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "support/capture.h"
#include "support/read_games.h"

namespace {

using Nags = std::map<uint32_t, uint16_t>;
using Comments = std::map<uint32_t, std::string>;

ReadGame ReadMovetext(const std::string& movetext) { return ReadOne("[Event \"e\"]\n\n" + movetext + "\n"); }

struct GlyphCase { const char* movetext; Nags nags; std::vector<std::string> trace; };

TEST(PgnAnnotations, StoresUpToTwoGlyphsPerMove)
{
    const GlyphCase cases[] = {
        {"1. e4!? e5 !! ?? *", {{1, 5}, {2, 3 | 4 << 8}}, {}},
        {"1. e4 $1 $2 $3 *", {{1, 1 | 2 << 8}}, {"OrvanDll: up to two NAG comments supported, ignoring $3."}},
        {"1. e4 $255 $0 $ *", {{1, 255}}, {}},
        {"1. e4 $300 *", {}, {"OrvanDll: syntax error in move annotation (NAG) $300."}},
        // Before the first move a glyph belongs to the game, but only behind
        // a move number, since a glyph does not begin movetext.
        {"$7 1. $9 e4 *", {{0, 9}}, {}},
    };
    for (const GlyphCase& test : cases) {
        TraceCapture trace;
        ReadGame game = ReadMovetext(test.movetext);
        EXPECT_EQ(game.nags, test.nags) << test.movetext;
        EXPECT_EQ(trace.lines, test.trace) << test.movetext;
    }
}

struct CommentCase { const char* movetext; Comments comments; int32_t hasComment; };

TEST(PgnAnnotations, StoresOneFoldedCommentPerMove)
{
    const CommentCase cases[] = {
        {"{ before } 1. e4 {  after\n\t the   move\r\n } *", {{0, "before"}, {1, "after the move"}}, 1},
        {"1. e4 { \n\t } *", {}, 0},
        {"1. e4 {first} {second} *", {{1, "second"}}, 1},
        {"1. e4 {a {b} c} *", {{1, "a {b"}}, 1},
        {"1. e4 ; to the end of the line {x}\ne5 <reserved {x} > *", {}, 0},
    };
    for (const CommentCase& test : cases) {
        ReadGame game = ReadMovetext(test.movetext);
        EXPECT_EQ(game.comments, test.comments) << test.movetext;
        EXPECT_EQ(game.hasComment, test.hasComment) << test.movetext;
    }
}

TEST(PgnAnnotations, FullCommentStoreDropsTheComment)
{
    std::string big(30000, 'x');
    TraceCapture trace;
    ReadGame game = ReadMovetext("1. e4 {" + big + "} e5 {" + big + "} 2. Nf3 {fits} *");
    EXPECT_EQ(game.comments.size(), 2u);
    EXPECT_EQ(game.comments[1], big);
    EXPECT_EQ(game.comments[3], "fits") << "the space of a refused comment is free again";
    EXPECT_EQ(game.hasComment, 1);
    EXPECT_EQ(trace.lines, (std::vector<std::string>{"OrvanDll: comment buffer full, move annotation ignored."}));

    // A comment that reaches offset 49999 is refused; one byte less fits.
    game = ReadMovetext("1. e4 {" + std::string(49997, 'y') + "} *");
    EXPECT_EQ(game.comments[1].size(), 49997u);
    game = ReadMovetext("1. e4 {" + std::string(49998, 'y') + "} *");
    EXPECT_TRUE(game.comments.empty());
}

TEST(PgnAnnotations, EndOfInputInsideACommentEndsTheGame)
{
    TraceCapture trace;
    const ReadGame game = ReadMovetext("1. e4 {never closed");
    EXPECT_EQ(game.Words(), (std::vector<std::string>{"e2e4|"}));
    EXPECT_TRUE(game.comments.empty());
    ASSERT_FALSE(trace.lines.empty());
    EXPECT_EQ(trace.lines[0], "OrvanDll: end of file encountered while in annotation.");
}

TEST(PgnAnnotations, OddBracketsAreReportedAndRepaired)
{
    TraceCapture trace;
    ReadGame game = ReadMovetext("1. e4 ((1. d4) 1. c4) e5 *");
    EXPECT_EQ(trace.lines.front(), "OrvanDll: double brackets no supported ((.");
    // The second bracket has no token: c4 reads as the main line's next move,
    // is illegal there, and the cut drops the pending d4 with it.
    EXPECT_EQ(game.Words(), (std::vector<std::string>{"e2e4|"}));

    trace.lines.clear();
    game = ReadMovetext("1. e4 e5 ) 2. Nf3 ) Nc6 *");
    EXPECT_EQ(trace.lines, std::vector<std::string>(2, "OrvanDll: unbalanced brackets ())."));
    EXPECT_EQ(game.Words(), (std::vector<std::string>{"e2e4", "e7e5", "g1f3", "b8c6|"}));

    // At a negative depth a ";" counts as a bracket pair.
    game = ReadMovetext("1. e4 ) e5 ; x\n2. Nf3 *");
    EXPECT_EQ(game.Words(), (std::vector<std::string>{"e2e4", "e7e5|"}));
}

}  // namespace
