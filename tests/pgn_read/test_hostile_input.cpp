// PGN pushed past every limit: the read ends with no crash and no write past
// an array (the sanitizer build checks the latter).
#include <gtest/gtest.h>

#include <string>

#include "support/capture.h"
#include "support/read_games.h"

namespace {

TEST(PgnHostileInput, DeepAndOddBracketsStayWithinTheirArrays)
{
    TraceCapture trace;
    std::string nested = "[Event \"e\"]\n1. e4 ";
    for (int i = 0; i < 3000; ++i)
        nested += "(1. d4 ";
    nested += std::string(3000, ')') + " e5 *\n";
    ReadGame game = ReadOne(nested);
    // e5's count holds 255 of its 3000 closing brackets, so for the main line
    // the variation never closes and e5 is not reached.
    EXPECT_EQ(MoveWord(game.moves.front()), "e2e4*|");
    EXPECT_EQ(game.moveCount, 1u);
    EXPECT_LE(game.treeCount, static_cast<uint32_t>(PGN_MAX_MOVES));

    // Tokens up to the list's end, each opening a variation that never closes.
    std::string open = "[Event \"e\"]\n1. e4";
    for (int i = 0; i < PGN_MAX_MOVES + 50; ++i)
        open += " (1. d4";
    game = ReadOne(open + " *\n");
    EXPECT_LE(game.treeCount, static_cast<uint32_t>(PGN_MAX_MOVES));
}

}  // namespace
