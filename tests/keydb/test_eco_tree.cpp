// The default opening key tree, built from the ECO file of pgn-extract.
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>

#include "keydb/key_test_support.h"
#include "ovkey/eco_tree/eco_tree.h"
#include "siblings/key_database.h"

namespace {

constexpr const char* kEcoFile = "/usr/share/pgn-extract/eco.pgn";

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

class EcoTree : public ::testing::Test {
protected:
    void SetUp() override
    {
        std::ifstream input(kEcoFile, std::ios::binary);
        if (!input)
            GTEST_SKIP() << kEcoFile << " is missing (Debian package pgn-extract)";
        text.assign(std::istreambuf_iterator<char>(input), std::istreambuf_iterator<char>());
        gameFile = scratch.Path() + "/eco.ovg";
        ASSERT_EQ(IDOpenBase(gameFile.c_str(), OV_KEYDB_CREATE, 0), OVK_OPEN_OK);
    }
    void TearDown() override { IDCloseBase(0); }

    TempDir scratch;
    std::string gameFile;
    std::string text;
};

TEST_F(EcoTree, EveryLineBecomesAKeyUnderTheLineItExtends)
{
    const auto lines = ovkey::ReadEcoLines(text);
    ASSERT_GT(lines.size(), 2000u);
    const ovkey::EcoTreeResult result = ovkey::BuildEcoTree(lines);
    EXPECT_EQ(result.skipped, 0);
    EXPECT_EQ(result.keys, static_cast<int32_t>(lines.size()) + 1);

    BoardLine najdorf = PlayLine({"e2e4", "c7c5", "g1f3", "d7d6", "d2d4", "c5d4", "f3d4", "g8f6",
                                  "b1c3", "a7a6"});
    int32_t key = 0;
    ASSERT_EQ(OvkFindPosition(&najdorf.board, &key), 1);
    char code[256], name[256];
    DbsGetKeycode(key, code);
    OvkGetKeyName(key, name, 0, sizeof name);
    EXPECT_STREQ(code, "B90");
    EXPECT_STREQ(name, "Sicilian: Najdorf");

    // The key's parent holds the line one key shorter.
    sKeyData data, parent;
    ASSERT_EQ(DbsGetKeyDataInfo(key, &data), 1);
    ASSERT_EQ(DbsGetKeyDataInfo(data.parent, &parent), 1);
    EXPECT_LT(parent.ply, data.ply);
    for (int32_t n = 1; n <= parent.ply; ++n)
        EXPECT_EQ(DbsGetKeyMove(data.parent, 0, n), DbsGetKeyMove(key, 0, n));
    EXPECT_GT(DbsGetDatabaseDepth(), 10);
}

}  // namespace
