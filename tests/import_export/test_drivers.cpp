// Import and export on real game files: progress and stop, memory texts, export series.
#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <vector>

#include "pgn/pgn_game.h"
#include "frame/owned_game_buffer.h"
#include "siblings/game_driver.h"
#include "store_helpers.h"
#include "support/read_games.h"

namespace {

const std::string ThreeGames =
    "[White \"one\"]\n\n1. e4 e5 1-0\n\n[White \"two\"]\n\n1. d4 d5 0-1\n\n[White \"three\"]\n\n1. c4 1/2-1/2\n";

void WriteFile(const std::string& path, const std::string& text) { std::ofstream(path, std::ios::binary) << text; }

// Records the counts given to progress; returns 0 at `stopAt`.
struct Progress {
    std::vector<uint32_t> counts;
    uint32_t stopAt = 0;
    static int32_t Call(uint32_t gamesWritten, intptr_t self)
    {
        auto& progress = *reinterpret_cast<Progress*>(self);
        progress.counts.push_back(gamesWritten);
        return gamesWritten != progress.stopAt ? 1 : 0;
    }
};

// Names the games of `numbers`, then 0.
struct Series {
    std::vector<int32_t> numbers;
    size_t calls = 0;
    static int32_t Next(intptr_t self)
    {
        auto& series = *reinterpret_cast<Series*>(self);
        return series.calls < series.numbers.size() ? series.numbers[series.calls++] : 0;
    }
};

class Drivers : public ::testing::Test {
protected:
    void SetUp() override
    {
        file = OvCreateGamefile(gamefile.c_str());
        ASSERT_NE(file, 0u);
        WriteFile(pgn.str(), ThreeGames);
    }
    void TearDown() override { OvCloseGamefile(file); }

    int32_t Import(Progress* progress)
    {
        return OvPgnImport(pgn.c_str(), file, 0, "NBRQK", Progress::Call, reinterpret_cast<intptr_t>(progress));
    }

    int32_t Export(const char* path, Series series, uint32_t flags = 0)
    {
        return OvExportGames(path, file, Series::Next, flags, reinterpret_cast<intptr_t>(&series));
    }

    ScratchPath gamefile{"drivers.ovg"}, pgn{"drivers.pgn"}, exported{"export.pgn"};
    OvGameFile file = 0;
};

TEST_F(Drivers, ImportCountsStoredGamesAndStopsWhenTheHostSaysSo)
{
    Progress all;
    EXPECT_EQ(Import(&all), 0);
    EXPECT_EQ(all.counts, (std::vector<uint32_t>{1, 2, 3}));

    Progress first{{}, 1};
    EXPECT_EQ(Import(&first), 0);
    EXPECT_EQ(first.counts, std::vector<uint32_t>{1});
    EXPECT_EQ(OvGetGamesCount(file), 4);
}

TEST_F(Drivers, MemoryReadTakesTheFirstGameThatIsNotSkipped)
{
    OwnedGameBuffer game;
    const std::pair<std::string, const char*> cases[] = {
        {"[White \"bad\"]\n[SetUp \"1\"]\n[FEN \"garbage\"]\n\n1. e4 *\n\n" + ThreeGames, "one"},
        {"no game here", ""},
    };
    for (const auto& [text, white] : cases) {
        HGLOBAL block = MemoryText(text);
        EXPECT_EQ(OvMemReadPgnGame(game.Get(), block, 0, "NBRQK"), 0);
        GlobalFree(block);
        EXPECT_STREQ(IGGameGetPlayer(game.Get(), 0, nullptr), white);
        EXPECT_EQ(IGGameGetGamelength(game.Get()), *white ? 2 : 0);
    }
}

TEST_F(Drivers, ExportWritesTheNamedGamesInTheirOrder)
{
    ASSERT_EQ(OvPgnImport(pgn.c_str(), file, 0, "NBRQK", nullptr, 0), 0);
    WriteFile(exported.str(), "old text that must go\n");
    EXPECT_EQ(Export(exported.c_str(), {{3, 1, 3}}), 3);
    const std::vector<ReadGame> games = ReadGamesOfFile(exported.str());
    ASSERT_EQ(games.size(), 3u);
    EXPECT_EQ(games[0].Tag(TagWhite) + games[1].Tag(TagWhite) + games[2].Tag(TagWhite), "threeonethree");

    EXPECT_EQ(Export(exported.c_str(), {}), 0);
    EXPECT_EQ(std::filesystem::file_size(exported.str()), 0u);
}

TEST_F(Drivers, MemoryTextOfAGame)
{
    OwnedGameBuffer game;
    NewGameErase(game.Get());
    HGLOBAL empty = OvCreatePgnGame(game.Get(), 0);
    ASSERT_NE(empty, nullptr);
    EXPECT_TRUE(TextOfBlock(empty).ends_with("[Result \"*\"]\n\n*\n\n"));
    EXPECT_EQ(GlobalSize(empty), 16384u);
    GlobalFree(empty);
}

}  // namespace
