// Classification on the real store and key database: every game of a corpus
// prefix against the ECO tree, compared with pgn-extract's ECO code for the
// same game.
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

#include "keydb/key_test_support.h"
#include "keys/keys_corpus.h"

namespace {

namespace fs = std::filesystem;

constexpr int PrefixGames = 3000;

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

TEST(KeyedCorpus, GameKeysAgreeWithPgnExtract)
{
    if (!fs::exists(PgnExtract))
        GTEST_SKIP() << PgnExtract << " is missing (Debian package pgn-extract)";
    TempDir scratch;
    const fs::path directory{scratch.Path()}, prefix = directory / "prefix.pgn";
    if (!CutCorpusPrefix(prefix, PrefixGames) || !OpenEcoDatabase(directory / "eco.ovg"))
        GTEST_SKIP() << "needs the corpus " << CorpusPath << " and the ECO file " << EcoPath;
    const OvGameFile file = OvCreateGamefile((directory / "games.ovg").c_str());
    OvPgnImport(prefix.c_str(), file, 0, nullptr, nullptr, 0);
    const OvGameBuffer game = OvAllocGameBuffer();
    const std::vector<std::string> expected = PgnExtractCodes(prefix, directory / "eco.pgn");
    EXPECT_EQ(OvGetGamesCount(file), PrefixGames);
    EXPECT_EQ(expected.size(), size_t(PrefixGames));

    int agreed = 0;
    for (int32_t n = 1; n <= PrefixGames && size_t(n) <= expected.size(); ++n) {
        EXPECT_NE(OvReadGame(game, file, n), 0) << n;
        int32_t reached = -1;
        const std::string code = KeyCode(OvClassifyGame(game, INT32_MAX, &reached));
        if (code == expected[size_t(n - 1)])
            ++agreed;
        else
            std::cout << "  game " << n << ": " << code << " at ply " << reached << ", pgn-extract \""
                      << expected[size_t(n - 1)] << "\"\n";
    }
    OvFreeGameBuffer(game);
    OvCloseGamefile(file);
    OvCloseDatabase(0);
    std::cout << "ECO agreement with pgn-extract: " << agreed << " of " << PrefixGames << "\n";
    EXPECT_GE(double(agreed) / PrefixGames, 0.98);
}

}  // namespace
