// Classification on the real store and key database: every game of a corpus
// prefix against the ECO tree, compared with pgn-extract's ECO code for the
// same game.
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "keydb/key_test_support.h"
#include "keys/keys_corpus.h"

namespace {

namespace fs = std::filesystem;

constexpr int PrefixGames = 3000;

struct KeyedCorpus {
    TempDir scratch;
    fs::path directory{scratch.Path()};
    fs::path prefix;
    OvGameFile file = 0;
    OvGameBuffer game = 0;
};
KeyedCorpus* Corpus = nullptr;

// The ECO code pgn-extract gives each game of `pgn`, "" where it finds none.
std::vector<std::string> PgnExtractCodes(const fs::path& pgn, const fs::path& out)
{
    const std::string command = PgnExtract + " -s -e" + EcoPath + " -o " + out.string() + " " + pgn.string() +
                                " 2>/dev/null";
    std::vector<std::string> codes;
    if (std::system(command.c_str()) != 0)
        return codes;
    std::ifstream in(out);
    std::string line;
    while (std::getline(in, line)) {
        if (line.starts_with("[Event "))
            codes.emplace_back();
        else if (line.starts_with("[ECO \"") && !codes.empty())
            codes.back() = line.substr(6, line.rfind('"') - 6);
    }
    return codes;
}

std::string KeyCode(int32_t key)
{
    sKeyInfo info{};
    OvGetKeyInfo(key, &info);
    return info.keycode;
}

class KeyedCorpusTest : public testing::Test {
protected:
    static void SetUpTestSuite()
    {
        auto corpus = std::make_unique<KeyedCorpus>();
        corpus->prefix = corpus->directory / "prefix.pgn";
        if (!CutCorpusPrefix(corpus->prefix, PrefixGames) || !OpenEcoDatabase(corpus->directory / "eco.ovg"))
            return;
        corpus->file = OvCreateGamefile((corpus->directory / "games.ovg").c_str());
        OvPgnImport(corpus->prefix.c_str(), corpus->file, 0, nullptr, nullptr, 0);
        corpus->game = OvAllocGameBuffer();
        Corpus = corpus.release();
    }
    static void TearDownTestSuite()
    {
        if (Corpus == nullptr)
            return;
        OvFreeGameBuffer(Corpus->game);
        OvCloseGamefile(Corpus->file);
        OvCloseDatabase(0);
        delete Corpus;
        Corpus = nullptr;
    }
    void SetUp() override
    {
        if (Corpus == nullptr)
            GTEST_SKIP() << "needs the corpus " << CorpusPath << " and the ECO file " << EcoPath;
        ASSERT_EQ(OvGetGamesCount(Corpus->file), PrefixGames);
    }
};

TEST_F(KeyedCorpusTest, GameKeysAgreeWithPgnExtract)
{
    if (!fs::exists(PgnExtract))
        GTEST_SKIP() << PgnExtract << " is missing (Debian package pgn-extract)";
    const std::vector<std::string> expected = PgnExtractCodes(Corpus->prefix, Corpus->directory / "eco.pgn");
    ASSERT_EQ(expected.size(), size_t(PrefixGames));

    int agreed = 0;
    for (int32_t n = 1; n <= PrefixGames; ++n) {
        ASSERT_NE(OvReadGame(Corpus->game, Corpus->file, n), 0) << n;
        int32_t reached = -1;
        const std::string code = KeyCode(OvClassifyGame(Corpus->game, INT32_MAX, &reached));
        if (code == expected[size_t(n - 1)])
            ++agreed;
        else
            std::cout << "  game " << n << ": " << code << " at ply " << reached << ", pgn-extract \""
                      << expected[size_t(n - 1)] << "\"\n";
    }
    const double rate = double(agreed) / PrefixGames;
    std::cout << "ECO agreement with pgn-extract: " << agreed << " of " << PrefixGames << "\n";
    EXPECT_GE(rate, 0.98);
}

TEST_F(KeyedCorpusTest, MovesGameAndPositionTellTheSameKeys)
{
    std::vector<int32_t> keys(400);
    for (int32_t n = 1; n <= 60; ++n) {
        ASSERT_NE(OvReadGame(Corpus->game, Corpus->file, n), 0);
        const int32_t places = OvClassifyMoves(Corpus->game, keys.data(), int32_t(keys.size()));
        if (OvGetInitialPos(Corpus->game, nullptr) == 2) {
            EXPECT_EQ(places, 0) << n;
            continue;
        }
        ASSERT_GE(places, 1) << n;
        ASSERT_EQ(keys[0], OvGetFirstKey(0, OV_KEYORDER_TREE)) << "the start position is the root key";
        ASSERT_NE(keys[size_t(places - 1)], 0);
        OvGotoMove(Corpus->game, 0);
        for (int32_t i = 0; i < places; ++i) {
            ASSERT_EQ(OvClassifyPosition(Corpus->game), keys[size_t(i)]) << n << " ply " << i;
            OvPlayMoves(Corpus->game, 1);
        }
        int32_t reached = -1;
        EXPECT_EQ(OvClassifyGame(Corpus->game, INT32_MAX, &reached), keys[size_t(places - 1)]) << n;
        EXPECT_EQ(reached, places - 1) << n;
        // A limit inside the line stops the search there.
        const int32_t limit = places / 2;
        int32_t deepest = limit;
        while (keys[size_t(deepest)] == 0)
            --deepest;
        EXPECT_EQ(OvClassifyGame(Corpus->game, limit, &reached), keys[size_t(deepest)]) << n;
        EXPECT_EQ(reached, deepest) << n;
    }
}

}  // namespace
