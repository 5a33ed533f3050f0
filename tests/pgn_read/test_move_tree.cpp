// The flat move tree that a game's variations become, and how an illegal
// move cuts a line.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include "support/capture.h"
#include "support/read_games.h"

namespace {

using Moves = std::vector<std::string>;

std::string Game(const std::string& movetext) { return "[Event \"t\"]\n\n" + movetext + "\n"; }

struct TreeCase { const char* movetext; Moves moves; uint32_t moveCount, treeCount; };

TEST(PgnMoveTree, LinesStandDepthFirstWithBranchMarks)
{
    const TreeCase cases[] = {
        {"1. e4 e5 (1... c5 2. Nf3) (1... e6) 2. Nf3 Nc6 *",
         {"e2e4", "e7e5*", "g1f3", "b8c6|", "c7c5*", "g1f3|", "e7e6|"}, 4, 7},
        // Sub-lines of a line come from its last moves back to its first.
        {"1. e4 (1. d4) e5 (1... c5) *", {"e2e4*", "e7e5*|", "c7c5|", "d2d4|"}, 2, 4},
        // ";" inside a variation separates two alternatives.
        {"1. e4 (1. d4 ; 1. c4) e5 *", {"e2e4*", "e7e5|", "d2d4*|", "c2c4|"}, 2, 4},
        // An empty pair of brackets ends the main line in front of its move.
        {"1. e4 e5 () 2. Nf3 Nc6 *", {"e2e4", "e7e5|"}, 2, 2},
        // Brackets behind the last move have nothing to attach to.
        {"1. e4 e5 ( ) *", {"e2e4", "e7e5|"}, 2, 0},
    };
    for (const TreeCase& test : cases) {
        ReadGame game = ReadOne(Game(test.movetext));
        EXPECT_EQ(game.Words(), test.moves) << test.movetext;
        EXPECT_EQ(game.moveCount, test.moveCount) << test.movetext;
        EXPECT_EQ(game.treeCount, test.treeCount) << test.movetext;
    }
}

TEST(PgnMoveTree, IllegalMoveCutsItsLineAndReportsIt)
{
    // The colour letter goes by the token's place in the list.
    const struct { const char* movetext; Moves moves; const char* lastTrace; } cases[] = {
        {"1. e4 e5 2. Nf3 Ke7 3. Bb5 Qd6 *", {"e2e4", "e7e5", "g1f3", "e8e7", "f1b5|"},
         "OrvanDll: 3b (6/6) illegal, game truncated."},
        {"1. e5 e4 *", {}, "OrvanDll: 1w (1/2) illegal, game truncated."},  // still reaches the callback
    };
    for (const auto& c : cases) {
        TraceCapture trace;
        ReadGame game = ReadOne(Game(c.movetext));
        EXPECT_EQ(game.Words(), c.moves);
        ASSERT_FALSE(trace.lines.empty());
        EXPECT_EQ(trace.lines.back(), c.lastTrace);
    }
}

TEST(PgnMoveTree, PendingAlternativesBeyondTheStackAreDropped)
{
    // 800 alternatives to one move: the first 750 are played, the rest are
    // passed over with a trace line, and nothing is written past an array.
    std::string movetext = "1. e4";
    for (int i = 0; i < 800; ++i)
        movetext += i % 2 == 0 ? " (1. d4)" : " (1. c4)";
    movetext += " e5 *";
    TraceCapture trace;
    ReadGame game = ReadOne(Game(movetext));
    EXPECT_EQ(game.moveCount, 2u);
    EXPECT_EQ(game.treeCount, 2u + 750u);
    EXPECT_EQ(MoveWord(game.moves[2]), "d2d4*|");
    EXPECT_EQ(MoveWord(game.moves.back()), "c2c4|");
    const char* skipped = "OrvanDll: too many pending variations, skipping variation.";
    EXPECT_EQ(std::count(trace.lines.begin(), trace.lines.end(), skipped), 50);
}

TEST(PgnMoveTree, MovesBeyondTheTokenListAreDropped)
{
    std::string movetext;
    for (int i = 0; i < 2501; ++i)
        movetext += "Nf3 Nf6 Ng1 Ng8 ";
    TraceCapture trace;
    ReadGame game = ReadOne(Game("1. " + movetext + "*"));
    EXPECT_EQ(game.moveCount, static_cast<uint32_t>(PGN_MAX_MOVES));
    EXPECT_EQ(MoveWord(game.moves.back()), "f6g8|");
    EXPECT_EQ(std::count(trace.lines.begin(), trace.lines.end(), "OrvanDll: move buffer full, skipping move."), 4);
}

}  // namespace
