// Game files, the key database and stored games against the recording fakes:
// each row calls the library and names the driver calls it must make, in
// order, and the results it must give. No row may leave the lock held.
#include <functional>
#include <map>
#include <thread>

#include <gtest/gtest.h>

#include "fakes/fake_siblings.h"
#include "frame/library_mutex.h"
#include "orvan.h"
#include "support/capture.h"

namespace {

using CallLog = std::vector<std::string>;
using Results = std::vector<int64_t>;

struct CallRow {
    const char* name;
    std::map<std::string, int32_t, std::less<>> answers;  // Fakes().results
    std::function<Results(OvGameBuffer game)> call;
    Results results;
    CallLog log;
    bool watchLock = false;  // log entries end in " locked" or " free"
};

// True when some thread holds LibraryMutex: another thread cannot take it.
bool LibraryMutexHeld()
{
    bool taken = false;
    std::thread([&] { taken = std::unique_lock(LibraryMutex(), std::try_to_lock).owns_lock(); }).join();
    return !taken;
}

constexpr size_t KeyCacheBytes = 32 * 2180;

Results Status(OvGameBuffer) { return {OvFileStatus(5, 0)}; }
Results Delete(OvGameBuffer) { return {OvDeleteGame(6, 2)}; }
const CallLog kOpenAndClose = {R"(IDOpenBase("/d/base.ovg", 0, 0))", "DbsKeyCacheOn(ptr, 32)", "DbsKeyCacheOff()",
                               "IDCloseBase(0)"};

const CallRow kRows[] = {
    // ---- Game files ----
    {"create removes old key files first", {{"OvgOpenGamefile", 42}, {"OvkDeleteDatabaseFiles", 0}},
     [](OvGameBuffer) { return Results{OvCreateGamefile("/data/games/new.ovg")}; }, {42},
     {R"(OvkDeleteDatabaseFiles("/data/games/new.ovg", "/data/games/OvIndex/", 7))",
      R"(OvgOpenGamefile("/data/games/new.ovg", 1))"}},
    {"create without a directory hands the path as index path", {{"OvgOpenGamefile", 0}},
     [](OvGameBuffer) { return Results{OvCreateGamefile("new.ovg")}; }, {0},
     {R"(OvkDeleteDatabaseFiles("new.ovg", "new.ovg", 7))", R"(OvgOpenGamefile("new.ovg", 1))"}},
    {"create refuses a path it cannot name, removing nothing", {},
     [](OvGameBuffer) {
         TraceCapture trace;
         return Results{OvCreateGamefile(("/" + std::string(300, 'd') + "/new.ovg").c_str())};
     },
     {0}, {}},
    // File status keeps only the open and bulk bits, asking the key database for its own file.
    {"status 0xFF", {{"IGFileStatus", 0xFF}}, Status, {3}, {"IDIsDatabaseGamefile(5)", "IGFileStatus(5, 0)"}},
    {"database status", {{"IDIsDatabaseGamefile", 7}, {"DbsFileStatus", 5}}, Status, {1},
     {"IDIsDatabaseGamefile(5)", "DbsFileStatus(0)"}},
    {"bulk mode 2 takes the write lock, every other mode starts plainly", {{"OvgFileAction", 0}},
     [](OvGameBuffer) {
         Results results;
         for (int32_t mode : {2, 0x102})
             results.insert(results.end(), {OvStartBulkOperation(9, mode), OvEndBulkOperation(9)});
         return results;
     },
     Results(4, 1), {"OvgFileAction(9, 2)", "OvgFileAction(9, 0)", "OvgFileAction(9, 1)", "OvgFileAction(9, 0)"}},

    // ---- The key database ----
    {"open lends a zeroed cache that close takes back and frees", {},
     [](OvGameBuffer) {
         const int32_t opened = OvOpenDatabase("/d/base.ovg", 0);
         void* cache = Fakes().keyCache;
         EXPECT_EQ(GlobalSize(cache), KeyCacheBytes);
         EXPECT_TRUE(cache != nullptr &&
                     std::string(static_cast<const char*>(cache), KeyCacheBytes) == std::string(KeyCacheBytes, '\0'));
         const int32_t closed = OvCloseDatabase(0);
         EXPECT_EQ(GlobalSize(cache), 0u);
         return Results{opened, closed};
     },
     {1, 1}, kOpenAndClose},
    {"a failed open leaves nothing to close and lets an open follow", {{"IDOpenBase", 2}},
     [](OvGameBuffer) {
         Results results{OvOpenDatabase("/d/none.ovg", 1), OvCloseDatabase(0)};
         Fakes().results.erase("IDOpenBase");
         results.insert(results.end(), {OvOpenDatabase("/d/base.ovg", 0), OvCloseDatabase(0)});
         return results;
     },
     {0, 1, 1, 1},
     {R"(IDOpenBase("/d/none.ovg", 1, 0))", R"(IDOpenBase("/d/base.ovg", 0, 0))", "DbsKeyCacheOn(ptr, 32)",
      "DbsKeyCacheOff()", "IDCloseBase(0)"}},
    {"a second open is refused and keeps the first cache; a close without an open touches nothing", {},
     [](OvGameBuffer) {
         TraceCapture trace;
         Results results{OvCloseDatabase(0), OvOpenDatabase("/d/base.ovg", 0)};
         void* cache = Fakes().keyCache;
         results.push_back(OvOpenDatabase("/d/two.ovg", 0));
         EXPECT_TRUE(Fakes().keyCache == cache && GlobalSize(cache) == KeyCacheBytes);
         results.insert(results.end(), {OvCloseDatabase(0), OvCloseDatabase(0)});
         return results;
     },
     {1, 1, 0, 1, 1}, kOpenAndClose},
    {"delete files and optimize pass failures through", {{"OvkDeleteDatabaseFiles", 0}, {"OvkOptimizeDatabase", 0}},
     [](OvGameBuffer) {
         return Results{OvDeleteDatabaseFiles("/d/a.ovg", "/d/OvIndex/", 5), OvOptimizeDataBase(1, 0)};
     },
     {0, 0}, {R"(OvkDeleteDatabaseFiles("/d/a.ovg", "/d/OvIndex/", 5))", "OvkOptimizeDatabase(0, 0, 1, 1, 0)"}},

    // ---- Game buffers and stored games ----
    {"a failed alloc shows the box and gives 0", {{"IGGameOpenGame", 0}},
     [](OvGameBuffer) {
         BoxCapture boxes;
         const Results results{OvAllocGameBuffer()};
         EXPECT_TRUE(boxes.boxes.size() == 1 && boxes.boxes[0].text == "Cannot allocate game buffer");
         return results;
     },
     {0}, {"IGGameOpenGame()"}},
    {"reads hold the lock for the load only and record the source after", {},
     [](OvGameBuffer game) {
         Results results{OvReadGame(game, 3, 12), Fakes().games[game].sourceNumber};
         results.insert(results.end(), {OvReadGameHeader(game, 3, 40), Fakes().games[game].sourceNumber});
         return results;
     },
     {1, 12, 1, 40},
     {"OvgLoadGame(1, 3, 12, 0) locked", "IGGamePutSourceLoadnumber(1, 12) free",
      "OvgLoadGameHeader(1, 3, 40) locked", "IGGamePutSourceLoadnumber(1, 40) free"},
     true},
    {"refused reads leave the source number; any other answer reads as success", {},
     [](OvGameBuffer game) {
         Results results{OvReadGame(game, 3, 5)};
         Fakes().results = {{"OvgLoadGame", 0}, {"OvgLoadGameHeader", 0}};
         results.insert(results.end(),
                        {OvReadGame(game, 3, 99), OvReadGameHeader(game, 3, 99), Fakes().games[game].sourceNumber});
         Fakes().results = {{"OvgLoadGame", -7}};
         results.insert(results.end(), {OvReadGame(game, 3, 6), OvReadGameHeader(777, 3, 6)});
         return results;
     },
     {1, 0, 0, 5, 1, 0},
     {"OvgLoadGame(1, 3, 5, 0)", "IGGamePutSourceLoadnumber(1, 5)", "OvgLoadGame(1, 3, 99, 0)",
      "OvgLoadGameHeader(1, 3, 99)", "OvgLoadGame(1, 3, 6, 0)", "IGGamePutSourceLoadnumber(1, 6)",
      "OvgLoadGameHeader(777, 3, 6)"}},
    {"write chooses the store under one hold of the lock", {{"OvgWriteGame", 17}},
     [](OvGameBuffer game) {
         int32_t out = 0;
         Results results{OvWriteGame(game, 4, &out), out};
         Fakes().results = {{"IDIsDatabaseGamefile", 1}, {"OvkSaveToDatabase", 0}};
         out = -5;
         results.push_back(OvWriteGame(game, 4, &out));
         results.push_back(out);  // the database store leaves `out` alone
         return results;
     },
     {17, 17, 0, -5},
     {"IDIsDatabaseGamefile(4) locked", "OvgWriteGame(1, 4, 0, ptr) locked", "IDIsDatabaseGamefile(4) locked",
      "OvkSaveToDatabase(1, 4, 0, 0, 1) locked"},
     true},
    {"write may be called with the lock held, as from a key search callback", {},
     [](OvGameBuffer game) {
         LibraryLock held(LibraryMutex());
         return Results{OvWriteGame(game, 4, nullptr)};
     },
     {1}, {"IDIsDatabaseGamefile(4)", "OvgWriteGame(1, 4, 0, null)"}},
    // Deleting in the key database's own file keeps its count of deleted games.
    {"delete in the database", {{"IDIsDatabaseGamefile", 1}}, Delete, {1},
     {"OvgDeleteGame(6, 2)", "IDIsDatabaseGamefile(6)", "DbsAdjustDeletedGames(1)"}},
    {"refused delete", {{"OvgDeleteGame", -1}, {"IDIsDatabaseGamefile", 1}}, Delete, {0}, {"OvgDeleteGame(6, 2)"}},
};

TEST(GamefileCalls, EachCallMakesItsDriverCallsAndGivesItsResults)
{
    for (const CallRow& row : kRows) {
        SCOPED_TRACE(row.name);
        ResetFakes();
        const OvGameBuffer game = OvAllocGameBuffer();
        ASSERT_EQ(game, 1u);
        Fakes().calls.clear();
        Fakes().results.insert(row.answers.begin(), row.answers.end());
        CallLog lockDuring;
        if (row.watchLock)
            Fakes().onCall = [&](const std::string& call) {
                lockDuring.push_back(call + (LibraryMutexHeld() ? " locked" : " free"));
            };
        EXPECT_EQ(row.call(game), row.results);
        EXPECT_EQ(row.watchLock ? lockDuring : Fakes().calls, row.log);
        EXPECT_FALSE(LibraryMutexHeld());
    }
    ResetFakes();
}

}  // namespace
