// The import and export operations on real game files: progress and stop,
// memory texts, export series and memory results.
#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "pgn/pgn_game.h"
#include "pgn/read/owned_game_buffer.h"
#include "pgn_snapshot.h"
#include "siblings/game_driver.h"

namespace {

const std::string ThreeGames =
    "[White \"one\"]\n\n1. e4 e5 1-0\n\n"
    "[White \"two\"]\n\n1. d4 d5 0-1\n\n"
    "[White \"three\"]\n\n1. c4 1/2-1/2\n";

void WriteFile(const std::string& path, const std::string& text)
{
    std::ofstream(path, std::ios::binary) << text;
}

std::string ReadFile(const std::string& path)
{
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

struct ProgressLog {
    std::vector<uint32_t> counts;
    uint32_t stopAt = 0;
};

int32_t LogProgress(uint32_t gamesWritten, intptr_t userData)
{
    auto& log = *reinterpret_cast<ProgressLog*>(userData);
    log.counts.push_back(gamesWritten);
    return gamesWritten != log.stopAt ? 1 : 0;
}

struct Series {
    std::vector<int32_t> numbers;
    size_t next = 0;
    int32_t calls = 0;
};

int32_t NextOfSeries(intptr_t userData)
{
    auto& series = *reinterpret_cast<Series*>(userData);
    ++series.calls;
    return series.next < series.numbers.size() ? series.numbers[series.next++] : 0;
}

class Drivers : public ::testing::Test {
protected:
    void SetUp() override
    {
        file = OvCreateGamefile(gamefilePath.c_str());
        ASSERT_NE(file, 0u);
        WriteFile(pgnPath.str(), ThreeGames);
    }
    void TearDown() override { OvCloseGamefile(file); }

    std::vector<std::string> StoredWhitePlayers()
    {
        std::vector<std::string> players;
        OwnedGameBuffer game;
        for (int32_t number = 1; number <= OvGetGamesCount(file); ++number) {
            OvReadGame(game.Get(), file, number);
            players.emplace_back(IGGameGetPlayer(game.Get(), 0, nullptr));
        }
        return players;
    }

    ScratchPath gamefilePath{"drivers.ovg"};
    ScratchPath pgnPath{"drivers.pgn"};
    ScratchPath exportPath{"export.pgn"};
    OvGameFile file = 0;
};

TEST_F(Drivers, ImportCountsStoredGamesAndStopsWhenTheHostSaysSo)
{
    ProgressLog log;
    EXPECT_EQ(OvPgnImport(pgnPath.c_str(), file, 0, "NBRQK", LogProgress, reinterpret_cast<intptr_t>(&log)), 0);
    EXPECT_EQ(log.counts, (std::vector<uint32_t>{1, 2, 3}));
    EXPECT_EQ(StoredWhitePlayers(), (std::vector<std::string>{"one", "two", "three"}));

    ProgressLog stopping;
    stopping.stopAt = 1;
    EXPECT_EQ(OvPgnImport(pgnPath.c_str(), file, 0, "NBRQK", LogProgress,
                          reinterpret_cast<intptr_t>(&stopping)), 0);
    EXPECT_EQ(stopping.counts, std::vector<uint32_t>{1});
    EXPECT_EQ(OvGetGamesCount(file), 4);

    EXPECT_EQ(OvPgnImport(pgnPath.c_str(), file, 0, nullptr, nullptr, 0), 0);
    EXPECT_EQ(OvGetGamesCount(file), 7);
}

TEST_F(Drivers, ImportOfNothingStoresNothing)
{
    for (const std::string& text : {std::string(), std::string("no tags at all\n"), std::string("\x01\xff{")}) {
        WriteFile(pgnPath.str(), text);
        ProgressLog log;
        EXPECT_EQ(OvPgnImport(pgnPath.c_str(), file, 0, "NBRQK", LogProgress, reinterpret_cast<intptr_t>(&log)), 0);
        EXPECT_TRUE(log.counts.empty());
    }
    EXPECT_EQ(OvGetGamesCount(file), 0);
    EXPECT_EQ(OvPgnImport("/nonexistent/dir/x.pgn", file, 0, "NBRQK", nullptr, 0), 1);
    EXPECT_EQ(OvPgnImport(nullptr, file, 0, "NBRQK", nullptr, 0), 1);

    // A file that cannot take games ends the import at its first game.
    WriteFile(pgnPath.str(), ThreeGames);
    ProgressLog log;
    EXPECT_EQ(OvPgnImport(pgnPath.c_str(), 0, 0, "NBRQK", LogProgress, reinterpret_cast<intptr_t>(&log)), 0);
    EXPECT_TRUE(log.counts.empty());
}

TEST_F(Drivers, MemoryReadTakesTheFirstGameThatIsNotSkipped)
{
    OwnedGameBuffer game;
    HGLOBAL text = MemoryText(ThreeGames);
    EXPECT_EQ(OvMemReadPgnGame(game.Get(), text, 0, "NBRQK"), 0);
    EXPECT_STREQ(IGGameGetPlayer(game.Get(), 0, nullptr), "one");
    EXPECT_EQ(IGGameGetGamelength(game.Get()), 2);
    GlobalFree(text);

    text = MemoryText("[White \"bad\"]\n[FEN \"garbage\"]\n\n1. e4 *\n\n" + ThreeGames);
    EXPECT_EQ(OvMemReadPgnGame(game.Get(), text, 0, "NBRQK"), 0);
    EXPECT_STREQ(IGGameGetPlayer(game.Get(), 0, nullptr), "one");
    GlobalFree(text);

    text = MemoryText("no game here");
    EXPECT_EQ(OvMemReadPgnGame(game.Get(), text, 0, "NBRQK"), 0);
    EXPECT_STREQ(IGGameGetPlayer(game.Get(), 0, nullptr), "");
    EXPECT_EQ(IGGameGetGamelength(game.Get()), 0);
    EXPECT_EQ(GetInitialPosition(game.Get(), nullptr), 1);
    GlobalFree(text);

    EXPECT_EQ(OvMemReadPgnGame(game.Get(), nullptr, 0, "NBRQK"), 1);
    EXPECT_EQ(OvMemReadPgnGame(game.Get(), text, 0, "NBRQK"), 1);  // freed: no valid block
    text = MemoryText(ThreeGames);
    EXPECT_EQ(OvMemReadPgnGame(0, text, 0, "NBRQK"), 1);
    GlobalFree(text);
}

TEST_F(Drivers, ExportWritesTheNamedGamesInTheirOrder)
{
    ASSERT_EQ(OvPgnImport(pgnPath.c_str(), file, 0, "NBRQK", nullptr, 0), 0);
    WriteFile(exportPath.str(), "old text that must go\n");
    Series series{{3, 1, 3}};
    EXPECT_EQ(OvExportGames(exportPath.c_str(), file, NextOfSeries, 0, reinterpret_cast<intptr_t>(&series)), 3);
    const std::vector<GameSnapshot> games = ReadPgnFile(exportPath.str());
    ASSERT_EQ(games.size(), 3u);
    EXPECT_EQ(games[0].Tag(TagWhite), "three");
    EXPECT_EQ(games[1].Tag(TagWhite), "one");
    EXPECT_EQ(games[2].Tag(TagWhite), "three");
    const std::string first = ReadFile(exportPath.str());

    series = Series{{3, 1, 3}};
    EXPECT_EQ(OvExportGames(exportPath.c_str(), file, NextOfSeries, 0xFFFFFFFF, reinterpret_cast<intptr_t>(&series)), 3);
    EXPECT_EQ(ReadFile(exportPath.str()), first);

    series = Series{};
    EXPECT_EQ(OvExportGames(exportPath.c_str(), file, NextOfSeries, 0, reinterpret_cast<intptr_t>(&series)), 0);
    EXPECT_EQ(ReadFile(exportPath.str()), "");

    series = Series{{1}};
    EXPECT_EQ(OvExportGames("/nonexistent/dir/x.pgn", file, NextOfSeries, 0, reinterpret_cast<intptr_t>(&series)), 0);
    EXPECT_EQ(series.calls, 0);
    EXPECT_EQ(OvExportGames(exportPath.c_str(), file, nullptr, 0, 0), 0);
}

TEST_F(Drivers, MemoryTextOfAGameReadsBackAsTheSameGame)
{
    OwnedGameBuffer game;
    NewGameErase(game.Get());
    HGLOBAL empty = OvCreatePgnGame(game.Get(), 0);
    ASSERT_NE(empty, nullptr);
    const std::string emptyText = TextOfBlock(empty);
    EXPECT_NE(emptyText.find("[Result \"*\"]\n\n*\n\n"), std::string::npos) << emptyText;
    EXPECT_EQ(emptyText.substr(emptyText.size() - 4), "\n*\n\n");
    EXPECT_EQ(GlobalSize(empty) % 16384, 0u);
    GlobalFree(empty);

    // A long game with long comments passes the first block size.
    std::string text = "[White \"long\"]\n\n";
    const char* shuffle[4] = {"Nf3", "Nf6", "Ng1", "Ng8"};
    for (int i = 0; i < 400; ++i)
        text += (i % 2 == 0 ? std::to_string(i / 2 + 1) + ". " : "") + shuffle[i % 4] +
                " {a comment of some length to fill the text} ";
    text += "*\n";
    HGLOBAL in = MemoryText(text);
    ASSERT_EQ(OvMemReadPgnGame(game.Get(), in, 0, "NBRQK"), 0);
    GlobalFree(in);
    NewGameRewind(game.Get());
    HGLOBAL out = OvCreatePgnGame(game.Get(), 0);
    ASSERT_NE(out, nullptr);
    const std::string written = TextOfBlock(out);
    EXPECT_GT(written.size(), 16384u);
    EXPECT_GE(GlobalSize(out), written.size() + 1);

    OwnedGameBuffer again;
    ASSERT_EQ(OvMemReadPgnGame(again.Get(), out, 0, "NBRQK"), 0);
    GlobalFree(out);
    const GameSnapshot original = ReadPgnText(text).at(0);
    const GameSnapshot reread = ReadPgnText(written).at(0);
    EXPECT_EQ(reread.moves, original.moves);
    EXPECT_EQ(reread.comments, original.comments);
    EXPECT_EQ(IGGameGetGamelength(again.Get()), 400);
}

}  // namespace
