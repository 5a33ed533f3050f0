// Reading the lines of an opening file into key lines.
#include <gtest/gtest.h>

#include <string>

#include "ovkey/eco_tree/eco_tree.h"

namespace {

TEST(EcoLines, TagsAndMovesOfEachLine)
{
    const auto lines = ovkey::ReadEcoLines(
        "{ a file comment }\n"
        "[ECO \"A00\"]\n[Opening \"Polish\"]\n[Variation \"Tuebingen variation\"]\n\n1. b4 Nh6 *\n\n"
        "[ECO \"C20\"]\n[Opening \"King's pawn game\"]\n\n1. e4 e5 *\n\n"
        "[ECO \"X99\"]\n[Opening \"Set up\"]\n[SetUp \"1\"]\n"
        "[FEN \"8/8/8/8/8/8/8/K6k w - - 0 1\"]\n\n1. Kb1 *\n");
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[0].code, "A00");
    EXPECT_EQ(lines[0].name, "Polish: Tuebingen variation");
    const PackedMove b2b4 = 9 | (25 << 8), g8h6 = 62 | (47 << 8);
    EXPECT_EQ(lines[0].moves, (std::vector<PackedMove>{b2b4, g8h6}));
    EXPECT_EQ(lines[1].name, "King's pawn game");
    EXPECT_EQ(lines[1].moves.size(), 2u);
}

}  // namespace
