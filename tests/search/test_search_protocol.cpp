// The searches against recording fakes of the game store and key database:
// what they ask of the store, in which order, the callback protocol, the
// throttled progress and where the library's lock is held.
#include <gtest/gtest.h>

#include <cstring>
#include <future>
#include <string>
#include <vector>

#include "fakes/fake_search_calls.h"
#include "fakes/fake_siblings.h"
#include "frame/library_mutex.h"
#include "chess/position.h"
#include "platform/tick_clock.h"
#include "search/query_builder.h"
#include "support/capture.h"

namespace {

constexpr OvGameFile File = 100;
constexpr intptr_t User = 77;

// The fake clock: read by the searches, moved by the test.
uint32_t Now = 0;
uint32_t FakeTicks() { return Now; }

bool OtherThreadCanLock()
{
    return std::async(std::launch::async, [] {
               const bool locked = LibraryMutex().try_lock();
               if (locked)
                   LibraryMutex().unlock();
               return locked;
           }).get();
}

struct Call {
    uint32_t game;
    int32_t number, total;
    intptr_t user;
    bool operator==(const Call&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Call& call)
{
    return out << "(" << call.game << ", " << call.number << ", " << call.total << ", " << call.user << ")";
}

// What the host's callback saw, and what it answers: `stopAt` is the index
// of the call that returns 0 (-1 for none).
struct Host {
    std::vector<Call> calls;
    int stopAt = -1;
    bool lockFreeInCalls = true;
    bool checkLock = false;
};
Host* TheHost = nullptr;

int32_t Record(uint32_t game, int32_t number, int32_t total, intptr_t user)
{
    Host& host = *TheHost;
    host.calls.push_back({game, number, total, user});
    RecordCall("callback", {FakeArg(game), FakeArg(number), FakeArg(total)});
    if (host.checkLock && !OtherThreadCanLock())
        host.lockFreeInCalls = false;
    return static_cast<int>(host.calls.size()) - 1 == host.stopAt ? 0 : 1;
}

class SearchProtocol : public ::testing::Test {
protected:
    void SetUp() override
    {
        ResetFakes();
        ResetSearchFakes();
        Now = 1000;
        SetTickSource(&FakeTicks);
        TheHost = &host;
    }
    void TearDown() override
    {
        SetTickSource(nullptr);
        TheHost = nullptr;
    }

    void FileOf(int32_t games)
    {
        SearchFakes().games = games;
        Fakes().results["OvgGetNumberOfGames"] = games;
    }

    // Moves the clock by `step` at each header load or pattern test.
    void TickPerGame(uint32_t step)
    {
        Fakes().onCall = [step](const std::string& call) {
            if (call.starts_with("GetGameHeader") || call.starts_with("UnpackGame"))
                Now += step;
        };
    }

    void SearchAllHeaders(int32_t includeDeleted = 0)
    {
        const sQuery query = MakeQuery(QueryHeader, includeDeleted);
        EXPECT_EQ(OvSearchGameHdrs(File, &query, &Record, User), 0);
    }

    std::vector<std::string> CallsStartingWith(std::string_view prefix) const
    {
        std::vector<std::string> found;
        for (const std::string& call : Fakes().calls)
            if (call.starts_with(prefix))
                found.push_back(call);
        return found;
    }

    std::vector<int32_t> HitNumbers() const
    {
        std::vector<int32_t> numbers;
        for (const Call& call : host.calls)
            if (call.game != 0)
                numbers.push_back(call.number);
        return numbers;
    }

    std::vector<int32_t> ProgressNumbers() const
    {
        std::vector<int32_t> numbers;
        for (size_t index = 1; index + 1 < host.calls.size(); ++index)
            if (host.calls[index].game == 0)
                numbers.push_back(host.calls[index].number);
        return numbers;
    }

    Host host;
};

TEST_F(SearchProtocol, EmptyFileStillAsksForOneBatch)
{
    FileOf(0);
    SearchAllHeaders();
    EXPECT_EQ(host.calls, (std::vector<Call>{{0, 0, 0, User}, {0, 0, 0, User}}));
    EXPECT_EQ(CallsStartingWith("OvgReadGames").size(), 1u);
}

TEST_F(SearchProtocol, HeaderSearchOrderOfCalls)
{
    FileOf(1);
    SearchAllHeaders();
    const std::vector<std::string> expected = {
        "OvgFileAction(100, 1)",
        "IGGameOpenGame()",
        "OvgGetNumberOfGames(100)",
        "callback(0, 0, 1)",
        "OvgReadGames(100, 0, ptr, ptr, 65536, 100)",
        "GetGameHeader(1, #1, 0, 1)",
        "IGGamePutSourceLoadnumber(1, 1)",
        "IGGameGetStatus(1, 0)",
        "callback(1, 1, 1)",
        "callback(0, 1, 1)",
        "IGGameCloseGame(1)",
        "OvgFileAction(100, 0)",
    };
    EXPECT_EQ(Fakes().calls, expected);
}

TEST_F(SearchProtocol, BatchesFollowEachOtherAndNumberGamesFromOne)
{
    FileOf(250);
    SearchFakes().batchLimit = 70;  // as if the buffer held only 70 games
    SearchAllHeaders();
    EXPECT_EQ(CallsStartingWith("OvgReadGames"),
              (std::vector<std::string>{"OvgReadGames(100, 0, ptr, ptr, 65536, 100)",
                                        "OvgReadGames(100, 70, ptr, ptr, 65536, 100)",
                                        "OvgReadGames(100, 140, ptr, ptr, 65536, 100)",
                                        "OvgReadGames(100, 210, ptr, ptr, 65536, 100)"}));
    std::vector<int32_t> expected(250);
    for (int32_t k = 0; k < 250; ++k)
        expected[k] = k + 1;
    EXPECT_EQ(HitNumbers(), expected) << "game k of a batch lies at places[k] - places[0]";
    EXPECT_EQ(host.calls.back(), (Call{0, 250, 250, User}));
}

TEST_F(SearchProtocol, SecondFullBatchStartsAtGame101)
{
    FileOf(201);
    SearchAllHeaders();
    const auto reads = CallsStartingWith("OvgReadGames");
    ASSERT_EQ(reads.size(), 3u);
    EXPECT_EQ(reads[1], "OvgReadGames(100, 100, ptr, ptr, 65536, 100)");
    const auto headers = CallsStartingWith("GetGameHeader");
    ASSERT_EQ(headers.size(), 201u);
    EXPECT_EQ(headers[100], "GetGameHeader(1, #101, 0, 1)");
}

TEST_F(SearchProtocol, FailedReadEndsTheSearchAsIfTheFileEnded)
{
    FileOf(300);
    Fakes().results["OvgReadGames"] = -1;
    SearchAllHeaders();
    EXPECT_EQ(host.calls, (std::vector<Call>{{0, 0, 300, User}, {0, 300, 300, User}}));
}

TEST_F(SearchProtocol, DeletedGamesAndConditionlessQueries)
{
    FileOf(5);
    SearchFakes().deleted = {2, 4};
    SearchAllHeaders(0);
    EXPECT_EQ(HitNumbers(), (std::vector<int32_t>{1, 3, 5}));

    host.calls.clear();
    SearchAllHeaders(1);
    EXPECT_TRUE(HitNumbers().empty()) << "no live condition and deleted games included selects nothing";
    EXPECT_EQ(host.calls.size(), 2u);
}

struct ProgressCase {
    const char* name;
    uint32_t start;
    uint32_t step;           // clock step per tested game
    std::vector<int32_t> progress;  // numbers of the progress calls over 6 games without hits
};

TEST_F(SearchProtocol, ProgressComesOnlyAfterMoreThanASecond)
{
    const ProgressCase cases[] = {
        {"500 ms per game", 1000, 500, {3, 6}},
        {"exactly 1000 ms", 1000, 1000, {2, 4, 6}},
        {"1001 ms", 1000, 1001, {1, 2, 3, 4, 5, 6}},
        {"across the wrap", 0xFFFFFC00u, 600, {2, 4, 6}},
    };
    for (const ProgressCase& c : cases) {
        SCOPED_TRACE(c.name);
        ResetFakes();
        ResetSearchFakes();
        host.calls.clear();
        FileOf(6);
        Now = c.start;
        TickPerGame(c.step);
        SearchAllHeaders(1);  // no game is a hit
        EXPECT_EQ(ProgressNumbers(), c.progress);
        for (size_t index = 1; index + 1 < host.calls.size(); ++index)
            EXPECT_EQ(host.calls[index], (Call{0, host.calls[index].number, 6, User}));
    }
}

TEST_F(SearchProtocol, HitsRestartTheProgressTimer)
{
    FileOf(8);
    SearchFakes().hits = {1, 2, 3, 4, 5};
    TickPerGame(900);
    const sQuery query = [] {
        sQuery position = MakeQuery(QueryPosition);
        std::memcpy(&position.position, &StartPosition, sizeof position.position);
        return position;
    }();
    OvSearchGameHdrs(File, &query, &Record, User);
    EXPECT_EQ(HitNumbers(), (std::vector<int32_t>{1, 2, 3, 4, 5}));
    EXPECT_EQ(ProgressNumbers(), (std::vector<int32_t>{7})) << "1800 ms after the last hit, not before";
}

TEST_F(SearchProtocol, StopAtHitOrProgressStillEnds)
{
    struct Case {
        const char* name;
        int stopAt;
        uint32_t step;
        std::vector<Call> expected;
    };
    const Case cases[] = {
        {"first hit", 1, 0, {{0, 0, 250, User}, {1, 1, 250, User}, {0, 250, 250, User}}},
        {"start result ignored", 0, 0, {{0, 0, 250, User}, {1, 1, 250, User}, {1, 5, 250, User}}},
        {"progress", 2, 2000, {{0, 0, 250, User}, {1, 1, 250, User}, {0, 2, 250, User}, {0, 250, 250, User}}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        ResetFakes();
        ResetSearchFakes();
        host.calls.clear();
        host.stopAt = c.stopAt;
        FileOf(250);
        SearchFakes().deleted = {2, 3, 4};
        TickPerGame(c.step);
        SearchAllHeaders(0);
        if (c.stopAt == 0) {
            ASSERT_GE(host.calls.size(), 3u);
            host.calls.resize(3);
        } else {
            EXPECT_EQ(CallsStartingWith("OvgReadGames").size(), 1u) << "no batch after the stop";
        }
        EXPECT_EQ(host.calls, c.expected);
    }
}

TEST_F(SearchProtocol, BatchSearchesHoldTheLockOnlyForTheRead)
{
    FileOf(3);
    host.checkLock = true;
    bool heldForRead = true;
    Fakes().onCall = [&](const std::string& call) {
        if (call.starts_with("OvgReadGames") && OtherThreadCanLock())
            heldForRead = false;
    };
    SearchAllHeaders();
    EXPECT_TRUE(heldForRead);
    EXPECT_TRUE(host.lockFreeInCalls);
    EXPECT_EQ(HitNumbers().size(), 3u);
}

TEST_F(SearchProtocol, PositionSearchArmsThePatternAndTestsEachGame)
{
    FileOf(4);
    SearchFakes().hits = {2, 3, 4};
    SearchFakes().deleted = {3};
    sPosition start = StartPosition;
    start.epSquare = 20;  // e3: no capture possible, sanitised away on a copy
    const sPosition before = start;
    OvSearchPosGames(File, &start, 0, &Record, User);
    EXPECT_EQ(std::memcmp(&before, &start, sizeof start), 0) << "the caller's record is not touched";
    EXPECT_EQ(HitNumbers(), (std::vector<int32_t>{2, 4}));
    EXPECT_TRUE(CallsStartingWith("IGGamePutSourceLoadnumber").empty());
    EXPECT_TRUE(CallsStartingWith("BoardToInitialPosition").empty()) << "the standard start is set by erasing";
    const std::vector<std::string> head(Fakes().calls.begin(), Fakes().calls.begin() + 8);
    EXPECT_EQ(head, (std::vector<std::string>{"OvgFileAction(100, 1)", "IGGameOpenGame()", "OvgGetNumberOfGames(100)",
                                              "callback(0, 0, 4)", "NewGameErase(1)", "PatExactPosition(1)",
                                              "OvgReadGames(100, 0, ptr, ptr, 65536, 100)", "UnpackGame(1, #1, 2)"}));

    host.calls.clear();
    OvSearchPosGames(File, &start, 1, &Record, User);
    EXPECT_EQ(HitNumbers(), (std::vector<int32_t>{2, 3, 4}));
}

TEST_F(SearchProtocol, NoGameBufferEndsTheSearch)
{
    const BoxCapture boxes;
    FileOf(10);
    Fakes().results["IGGameOpenGame"] = 0;
    SearchAllHeaders();
    EXPECT_EQ(host.calls, (std::vector<Call>{{0, 0, 0, User}})) << "the header search has not started";
    host.calls.clear();
    OvSearchPosGames(File, &StartPosition, 0, &Record, User);
    EXPECT_EQ(host.calls, (std::vector<Call>{{0, 0, 10, User}, {0, 10, 10, User}}));
    EXPECT_TRUE(CallsStartingWith("OvgReadGames").empty());
    EXPECT_TRUE(CallsStartingWith("IGGameCloseGame").empty());
    EXPECT_EQ(CallsStartingWith("OvgFileAction(100, 0)").size(), 2u);
    EXPECT_EQ(boxes.boxes.size(), 2u);
}

TEST_F(SearchProtocol, KeyGameSearchHitsUnderTheLockWithoutReading)
{
    FileOf(40);
    SearchFakes().keyGames = {5, 9, 31};
    host.checkLock = true;
    sQuery query = MakeQuery(QueryKeyGames);
    query.key = 12;
    OvSearchGameHdrs(File, &query, &Record, User);
    EXPECT_EQ(host.calls, (std::vector<Call>{{0, 0, 40, User}, {1, 5, 40, User}, {1, 9, 40, User},
                                             {1, 31, 40, User}, {0, 40, 40, User}}));
    EXPECT_FALSE(host.lockFreeInCalls) << "hit calls come with the lock held";
    EXPECT_EQ(CallsStartingWith("DbsCBSearchKey"), (std::vector<std::string>{"DbsCBSearchKey(12, 2, 1, ptr)"}));
    EXPECT_TRUE(CallsStartingWith("OvgReadGames").empty());
    EXPECT_TRUE(CallsStartingWith("IGGameOpenGame").empty());

    host.calls.clear();
    host.stopAt = 1;
    OvSearchKeyGames(File, 12, &Record, User);
    EXPECT_EQ(host.calls, (std::vector<Call>{{0, 0, 40, User}, {1, 5, 40, User}, {0, 40, 40, User}}));
}

TEST_F(SearchProtocol, KeyMoveSearchSkipsGamesWithoutThePosition)
{
    FileOf(10);
    SearchFakes().keyGames = {3, 4, 12};
    SearchFakes().hits = {4};
    sQuery query = MakeQuery(QueryKeyMoves);
    query.key = 7;
    query.position = StartPosition;
    OvSearchGameHdrs(File, &query, &Record, User);
    EXPECT_EQ(host.calls, (std::vector<Call>{{0, 0, 10, User}, {1, 4, 10, User}, {0, 10, 10, User}}));
    EXPECT_EQ(CallsStartingWith("OvgReadGames"),
              (std::vector<std::string>{"OvgReadGames(100, 2, ptr, ptr, 65536, 1)",
                                        "OvgReadGames(100, 3, ptr, ptr, 65536, 1)",
                                        "OvgReadGames(100, 11, ptr, ptr, 65536, 1)"}));
    EXPECT_EQ(CallsStartingWith("UnpackGame"),
              (std::vector<std::string>{"UnpackGame(1, #3, 2)", "UnpackGame(1, #4, 2)", "UnpackGame(1, #4, 0)"}));
    EXPECT_EQ(CallsStartingWith("NewGameRewind").size(), 1u);
}

TEST_F(SearchProtocol, DispatchByKind)
{
    struct Case {
        uint32_t kind;
        bool board;
        const char* marker;  // a call only that search makes
    };
    const Case cases[] = {{QueryHeader, true, "GetGameHeader"}, {3, false, "GetGameHeader"},
                          {QueryPosition, false, "GetGameHeader"}, {QueryPosition, true, "PatExactPosition"},
                          {QueryKeyGames, false, "DbsCBSearchKey"}, {QueryKeyMoves, true, "DbsCBSearchKey(5"}};
    for (const Case& c : cases) {
        ResetFakes();
        FileOf(1);
        sQuery query = MakeQuery(c.kind);
        query.key = 5;
        if (c.board)
            query.position = StartPosition;
        OvSearchGameHdrs(File, &query, &Record, User);
        EXPECT_FALSE(CallsStartingWith(c.marker).empty()) << c.kind;
    }
    ResetFakes();
    OvSearchGameHdrs(File, nullptr, &Record, User);
    const sQuery query = MakeQuery(QueryHeader);
    OvSearchGameHdrs(File, &query, nullptr, User);
    EXPECT_TRUE(Fakes().calls.empty()) << "a null query or callback makes no call";
}

}  // namespace
