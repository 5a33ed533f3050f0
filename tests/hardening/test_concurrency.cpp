// Several threads on one game file at once: two PGN imports, two writers of
// games read from memory, a reader walking stored games, and a header search
// and a position search running over and over, each with game buffers of its
// own. Every game arrives once, and readers and searches only ever see whole
// games.
#include <atomic>
#include <cstring>
#include <map>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "frame/library_mutex.h"
#include "hardening/generated_games.h"
#include "orvan.h"

namespace {

constexpr int32_t InitialGames = 40;
constexpr int32_t ImportedGames = 150;  // per import thread
constexpr int32_t WrittenGames = 80;    // per writer thread

std::string WhiteOf(OvGameBuffer game)
{
    char text[64];
    OvGetHeaderInfo(game, HdrWhite, text, sizeof text);
    return text;
}

struct SearchTally {
    std::atomic<int32_t> hits{0};
    std::atomic<int32_t> wrongHits{0};
};

int32_t CountHit(uint32_t game, int32_t number, int32_t, intptr_t user)
{
    auto& tally = *reinterpret_cast<SearchTally*>(user);
    if (game != 0) {
        ++tally.hits;
        if (WhiteOf(game).rfind("White 1", 0) != 0)
            ++tally.wrongHits;
    }
    return 1;
}

// Generated games of even numbers open 1. e4; a position hit must be one.
int32_t CountEvenHit(uint32_t game, int32_t, int32_t, intptr_t user)
{
    auto& tally = *reinterpret_cast<SearchTally*>(user);
    if (game != 0) {
        ++tally.hits;
        const std::string white = WhiteOf(game);
        if (white.rfind("White ", 0) != 0 || std::stoi(white.substr(6)) % 2 != 0)
            ++tally.wrongHits;
    }
    return 1;
}

// The position after 1. e4, from the text of an even-numbered game.
sPosition PositionAfterE4()
{
    const OvGameBuffer game = OvAllocGameBuffer();
    const std::string text = GeneratedGame(2);
    HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, text.size() + 1);
    std::memcpy(GlobalLock(block), text.c_str(), text.size() + 1);
    GlobalUnlock(block);
    OvMemReadPgnGame(game, block, 0, nullptr);
    GlobalFree(block);
    OvGotoMove(game, 1);
    sPosition position{};
    OvGetCurrentPos(game, &position);
    OvFreeGameBuffer(game);
    return position;
}

// Writes games first .. first + WrittenGames - 1 through a game buffer of its
// own, each read from a memory block and checked on its way back to PGN.
void WriteFromMemory(OvGameFile file, int32_t first, std::atomic<int32_t>& faults)
{
    const OvGameBuffer game = OvAllocGameBuffer();
    for (int32_t number = first; number < first + WrittenGames; ++number) {
        const std::string text = GeneratedGame(number);
        HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, text.size() + 1);
        std::memcpy(GlobalLock(block), text.c_str(), text.size() + 1);
        GlobalUnlock(block);
        faults += OvMemReadPgnGame(game, block, 0, nullptr) != 0;
        GlobalFree(block);
        faults += OvWriteGame(game, file, nullptr) <= 0;
        OvGotoMove(game, 0);
        HGLOBAL pgn = OvCreatePgnGame(game, 0);
        faults += pgn == nullptr || std::strstr(static_cast<const char*>(GlobalLock(pgn)),
                                                ("[White \"White " + std::to_string(number) + "\"]").c_str()) == nullptr;
        GlobalFree(pgn);
    }
    OvFreeGameBuffer(game);
}

TEST(Concurrency, ImportsWritesReadsAndSearchesShareOneGameFile)
{
    ScratchDirectory scratch("orvan-threads");
    const std::string path = scratch.File("shared.ovg");
    WriteGeneratedGames(scratch.File("initial.pgn"), 1, InitialGames);
    WriteGeneratedGames(scratch.File("import1.pgn"), 10001, ImportedGames);
    WriteGeneratedGames(scratch.File("import2.pgn"), 20001, ImportedGames);
    const OvGameFile file = OvCreateGamefile(path.c_str());
    ASSERT_NE(file, 0u);
    ASSERT_EQ(OvPgnImport(scratch.File("initial.pgn").c_str(), file, 0, nullptr, nullptr, 0), 0);

    std::atomic<int32_t> faults{0};
    std::atomic<int32_t> writersLeft{4};
    std::vector<std::thread> threads;
    for (const char* name : {"import1.pgn", "import2.pgn"})
        threads.emplace_back([&, name] {
            faults += OvPgnImport(scratch.File(name).c_str(), file, 0, nullptr, nullptr, 0) != 0;
            --writersLeft;
        });
    for (const int32_t first : {30001, 40001})
        threads.emplace_back([&, first] {
            WriteFromMemory(file, first, faults);
            --writersLeft;
        });

    std::atomic<int32_t> reads{0};
    threads.emplace_back([&] {
        const OvGameBuffer game = OvAllocGameBuffer();
        for (int32_t round = 0; writersLeft > 0 || round < 50; ++round) {
            int32_t count;
            {
                const LibraryLock lock(LibraryMutex());
                count = OvGetGamesCount(file);
            }
            const int32_t number = 1 + (round * 7919) % count;
            if (OvReadGame(game, file, number) != 1 || WhiteOf(game).rfind("White ", 0) != 0 ||
                OvGotoMove(game, 100) < 14)
                ++faults;
            ++reads;
        }
        OvFreeGameBuffer(game);
    });

    SearchTally tally;
    std::atomic<int32_t> searches{0};
    threads.emplace_back([&] {
        sQuery query{};
        query.kind = QueryHeader;
        query.conditions[0][0] = {QfWhite, QopBeginsWith, "white 1"};
        while (writersLeft > 0 || searches < 3) {
            OvSearchGameHdrs(file, &query, CountHit, reinterpret_cast<intptr_t>(&tally));
            ++searches;
        }
    });
    SearchTally positionTally;
    std::atomic<int32_t> positionSearches{0};
    threads.emplace_back([&] {
        const sPosition afterE4 = PositionAfterE4();
        while (writersLeft > 0 || positionSearches < 3) {
            OvSearchPosGames(file, &afterE4, 0, CountEvenHit, reinterpret_cast<intptr_t>(&positionTally));
            ++positionSearches;
        }
    });
    for (auto& thread : threads)
        thread.join();

    EXPECT_EQ(faults, 0);
    EXPECT_EQ(tally.wrongHits, 0);
    EXPECT_GT(tally.hits, 0);
    EXPECT_EQ(positionTally.wrongHits, 0);
    EXPECT_GT(positionTally.hits, 0);
    RecordProperty("reads", reads.load());
    RecordProperty("searches", searches.load());
    RecordProperty("position_searches", positionSearches.load());

    // Every game arrived exactly once.
    const int32_t expectedCount = InitialGames + 2 * ImportedGames + 2 * WrittenGames;
    ASSERT_EQ(OvGetGamesCount(file), expectedCount);
    std::map<std::string, int32_t> seen;
    const OvGameBuffer game = OvAllocGameBuffer();
    for (int32_t number = 1; number <= expectedCount; ++number) {
        ASSERT_EQ(OvReadGameHeader(game, file, number), 1);
        ++seen[WhiteOf(game)];
    }
    OvFreeGameBuffer(game);
    for (const auto& [first, count] : std::map<int32_t, int32_t>{
             {1, InitialGames}, {10001, ImportedGames}, {20001, ImportedGames}, {30001, WrittenGames}, {40001, WrittenGames}})
        for (int32_t number = first; number < first + count; ++number)
            EXPECT_EQ(seen["White " + std::to_string(number)], 1) << "game " << number;
    EXPECT_EQ(seen.size(), static_cast<size_t>(expectedCount));
    OvCloseGamefile(file);
}

}  // namespace
