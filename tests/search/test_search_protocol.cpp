// The searches against recording fakes of the game store and key database:
// what they ask of the store and in which order, the callback protocol, the
// throttled progress and where the library's lock is held.
#include <gtest/gtest.h>

#include <functional>
#include <future>

#include "chess/position.h"
#include "fakes/fake_search_calls.h"
#include "fakes/fake_siblings.h"
#include "frame/library_mutex.h"
#include "platform/tick_clock.h"
#include "search/query_builder.h"

namespace {

using Log = std::vector<std::string>;
constexpr OvGameFile File = 100;
constexpr intptr_t User = 77;

uint32_t Now = 0;  // the fake clock, moved by the test
uint32_t FakeTicks() { return Now; }

bool OtherThreadCanLock()
{
    return std::async(std::launch::async, [] {
        std::unique_lock lock(LibraryMutex(), std::try_to_lock);
        return lock.owns_lock();
    }).get();
}

// The host: logs each call among the store's calls and as "game,number,total"
// in `triples`; the call with index `stopAt` answers 0.
struct Host {
    int calls = 0;
    int stopAt = -1;
    bool checkLock = false;
    bool lockFreeInCalls = true;
    std::string triples;
} host;

int32_t Record(uint32_t game, int32_t number, int32_t total, intptr_t user)
{
    EXPECT_EQ(user, User);
    RecordCall("callback", {FakeArg(game), FakeArg(number), FakeArg(total)});
    host.triples.append(host.calls == 0 ? "" : " ").append(std::to_string(game)).append(",");
    host.triples.append(std::to_string(number)).append(",").append(std::to_string(total));
    if (host.checkLock && !OtherThreadCanLock())
        host.lockFreeInCalls = false;
    return host.calls++ == host.stopAt ? 0 : 1;
}

void SearchAllHeaders()
{
    const sQuery query = MakeQuery(QueryHeader, 0);
    EXPECT_EQ(OvSearchGameHdrs(File, &query, &Record, User), 0);
}

// Moves the clock by `step` at each header load or pattern test.
void TickPerGame(uint32_t step)
{
    Fakes().onCall = [step](const std::string& call) {
        Now += call.starts_with("GetGameHeader") || call.starts_with("UnpackGame") ? step : 0;
    };
}

// Fresh fakes and host, a file of `games` games and the fake clock at 1000.
void Reset(int32_t games)
{
    ResetFakes();
    ResetSearchFakes();
    host = Host{};
    Now = 1000;
    SetTickSource(&FakeTicks);
    SearchFakes().games = games;
    Fakes().results["OvgGetNumberOfGames"] = games;
}

class SearchProtocol : public ::testing::Test {
protected:
    void TearDown() override { SetTickSource(nullptr); }
};

TEST_F(SearchProtocol, HeaderSearchOrderOfCalls)
{
    Reset(1);
    SearchAllHeaders();
    EXPECT_EQ(Fakes().calls, (Log{"OvgFileAction(100, 1)", "IGGameOpenGame()", "OvgGetNumberOfGames(100)",
                                  "callback(0, 0, 1)", "OvgReadGames(100, 0, ptr, ptr, 65536, 100)",
                                  "GetGameHeader(1, #1, 0, 1)", "IGGamePutSourceLoadnumber(1, 1)",
                                  "IGGameGetStatus(1, 0)", "callback(1, 1, 1)", "callback(0, 1, 1)",
                                  "IGGameCloseGame(1)", "OvgFileAction(100, 0)"}));
}

// Each row sets up the fakes, the host and the clock, runs a search and names
// the callback calls it must make, and how many batch reads. Progress comes
// only after more than a second without hits.
TEST_F(SearchProtocol, CallbackCallsOfEachSearch)
{
    const auto headers = [] { SearchAllHeaders(); };
    const auto keyGames = [] { SearchFakes().keyGames = {5, 9, 31}; OvSearchKeyGames(File, 12, &Record, User); };
    const auto positions = [] { OvSearchPosGames(File, &StartPosition, 0, &Record, User); };
    const auto clock = [](uint32_t start, uint32_t step) { return [=] { Now = start; TickPerGame(step); }; };
    const auto stop = [](int at, uint32_t step) {  // games 2 to 4 deleted
        return [=] { host.stopAt = at; SearchFakes().deleted = {2, 3, 4}; TickPerGame(step); };
    };
    const auto hits = [] { SearchFakes().hits = {2, 3, 4}; SearchFakes().deleted = {3}; };
    const struct {
        const char* name;
        int32_t games;
        std::function<void()> setUp, search;
        const char* callbacks;
        size_t reads = 1;
    } rows[] = {
        {"an empty file is still asked once", 0, [] {}, headers, "0,0,0 0,0,0"},
        {"a failed read ends the search as if the file had ended", 300, [] { Fakes().results["OvgReadGames"] = -1; },
         headers, "0,0,300 0,300,300"},
        {"stop at the first hit", 250, stop(1, 0), headers, "0,0,250 1,1,250 0,250,250"},
        {"stop at progress", 250, stop(2, 2000), headers, "0,0,250 1,1,250 0,2,250 0,250,250"},
        {"the start call's result does not count", 2, [] { host.stopAt = 0; }, headers, "0,0,2 1,1,2 1,2,2 0,2,2"},
        {"position search skips deleted games", 4, hits, positions, "0,0,4 1,2,4 1,4,4 0,4,4"},
        {"position search with deleted games", 4, hits,
         [] { OvSearchPosGames(File, &StartPosition, 1, &Record, User); }, "0,0,4 1,2,4 1,3,4 1,4,4 0,4,4"},
        {"key games come from the key database without reading", 40, [] { host.stopAt = 2; }, keyGames,
         "0,0,40 1,5,40 1,9,40 0,40,40", 0},
        {"progress at exactly 1000 ms", 6, clock(1000, 1000), positions, "0,0,6 0,2,6 0,4,6 0,6,6 0,6,6"},
        {"progress at 1001 ms", 6, clock(1000, 1001), positions, "0,0,6 0,1,6 0,2,6 0,3,6 0,4,6 0,5,6 0,6,6 0,6,6"},
        {"progress across the wrap", 6, clock(0xFFFFFC00u, 600), positions, "0,0,6 0,2,6 0,4,6 0,6,6 0,6,6"},
        {"hits restart the timer", 6, [] { SearchFakes().hits = {1, 2, 3}; TickPerGame(900); }, positions,
         "0,0,6 1,1,6 1,2,6 1,3,6 0,5,6 0,6,6"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        Reset(row.games);
        row.setUp();
        row.search();
        EXPECT_EQ(host.triples, row.callbacks);
        EXPECT_EQ(FakeCallsStartingWith("OvgReadGames").size(), row.reads);
    }
}

// Batch searches hold the lock for the read only; the key search calls the
// host with the lock held.
TEST_F(SearchProtocol, WhereTheLockIsHeld)
{
    Reset(3);
    host.checkLock = true;
    bool heldForRead = true;
    Fakes().onCall = [&](const std::string& call) {
        if (call.starts_with("OvgReadGames") && OtherThreadCanLock())
            heldForRead = false;
    };
    SearchAllHeaders();
    EXPECT_TRUE(heldForRead);
    EXPECT_TRUE(host.lockFreeInCalls);
    EXPECT_EQ(host.calls, 5);

    Reset(40);
    SearchFakes().keyGames = {5};
    host.checkLock = true;
    OvSearchKeyGames(File, 12, &Record, User);
    EXPECT_FALSE(host.lockFreeInCalls);
    EXPECT_EQ(FakeCallsStartingWith("DbsCBSearchKey"), Log{"DbsCBSearchKey(12, 2, 1, ptr)"});
}

}  // namespace
