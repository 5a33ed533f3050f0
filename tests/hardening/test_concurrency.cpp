// Threads on one game file, each with its own game buffers: two PGN imports,
// two writers of games read from memory, a reader, a header search and a
// position search. Every game arrives once; readers and searches see whole games.
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

// The hits of a search, and those whose White does not fit.
struct SearchTally {
    bool (*fits)(const std::string& white);
    std::atomic<int32_t> hits{0};
    std::atomic<int32_t> wrongHits{0};
};

int32_t CountHit(uint32_t game, int32_t, int32_t, intptr_t user)
{
    auto& tally = *reinterpret_cast<SearchTally*>(user);
    if (game != 0) {
        ++tally.hits;
        tally.wrongHits += tally.fits(WhiteOf(game)) ? 0 : 1;
    }
    return 1;
}

// Reads the generated game `number` into `game` from a memory block.
int32_t ReadFromMemory(OvGameBuffer game, int32_t number)
{
    const std::string text = GeneratedGame(number);
    HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, text.size() + 1);
    std::memcpy(GlobalLock(block), text.c_str(), text.size() + 1);
    GlobalUnlock(block);
    const int32_t result = OvMemReadPgnGame(game, block, 0, nullptr);
    GlobalFree(block);
    return result;
}

// The position after 1. e4, from the text of an even-numbered game.
sPosition PositionAfterE4()
{
    const OvGameBuffer game = OvAllocGameBuffer();
    ReadFromMemory(game, 2);
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
        faults += ReadFromMemory(game, number) != 0;
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

    std::atomic<int32_t> faults{0}, writersLeft{4}, searches{0}, positionSearches{0};
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

    threads.emplace_back([&] {
        const OvGameBuffer game = OvAllocGameBuffer();
        for (int32_t round = 0; writersLeft > 0 || round < 50; ++round) {
            const int32_t count = [&] {
                const LibraryLock lock(LibraryMutex());
                return OvGetGamesCount(file);
            }();
            const int32_t number = 1 + (round * 7919) % count;
            faults += OvReadGame(game, file, number) != 1 || WhiteOf(game).rfind("White ", 0) != 0 ||
                      OvGotoMove(game, 100) < 14;
        }
        OvFreeGameBuffer(game);
    });

    SearchTally tally{[](const std::string& white) { return white.rfind("White 1", 0) == 0; }};
    threads.emplace_back([&] {
        sQuery query{QueryHeader, 0, 0, {}, {{{QfWhite, QopBeginsWith, "white 1"}}}};
        while (writersLeft > 0 || searches < 3) {
            OvSearchGameHdrs(file, &query, CountHit, reinterpret_cast<intptr_t>(&tally));
            ++searches;
        }
    });
    // Generated games of even numbers open 1. e4; a position hit must be one.
    SearchTally positionTally{[](const std::string& white) {
        return white.rfind("White ", 0) == 0 && std::stoi(white.substr(6)) % 2 == 0;
    }};
    threads.emplace_back([&] {
        const sPosition afterE4 = PositionAfterE4();
        while (writersLeft > 0 || positionSearches < 3) {
            OvSearchPosGames(file, &afterE4, 0, CountHit, reinterpret_cast<intptr_t>(&positionTally));
            ++positionSearches;
        }
    });
    for (auto& thread : threads)
        thread.join();

    EXPECT_EQ(faults, 0);
    for (const SearchTally* searched : {&tally, &positionTally}) {
        EXPECT_EQ(searched->wrongHits, 0);
        EXPECT_GT(searched->hits, 0);
    }

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
    OvCloseGamefile(file);
}

}  // namespace
