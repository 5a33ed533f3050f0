#include <algorithm>
#include <cstring>

#include "gamefiles_fixture.h"
#include "support/capture.h"

namespace {

constexpr size_t KeyCacheBytes = 32 * 2180;

class KeyDatabaseFiles : public FakeSiblingsTest {
protected:
    void TearDown() override
    {
        OvCloseDatabase(0);  // no test may leave a database open for the next
        FakeSiblingsTest::TearDown();
    }
};

bool AllZero(const void* block, size_t bytes)
{
    const auto* first = static_cast<const unsigned char*>(block);
    return std::all_of(first, first + bytes, [](unsigned char b) { return b == 0; });
}

TEST_F(KeyDatabaseFiles, OpenLendsAZeroedCacheThatCloseTakesBackAndFrees)
{
    ASSERT_EQ(OvOpenDatabase("/d/base.ovg", 1), 1);
    void* cache = Fakes().keyCache;
    ASSERT_NE(cache, nullptr);
    EXPECT_EQ(GlobalSize(cache), KeyCacheBytes);
    EXPECT_TRUE(AllZero(cache, KeyCacheBytes));
    EXPECT_EQ(Fakes().calls,
              (CallLog{R"(IDOpenBase("/d/base.ovg", 1, 0))", "DbsKeyCacheOn(ptr, 32)"}));

    Fakes().calls.clear();
    EXPECT_EQ(OvCloseDatabase(0), 1);
    EXPECT_EQ(Fakes().calls, (CallLog{"DbsKeyCacheOff()", "IDCloseBase(0)"}));
    EXPECT_EQ(GlobalSize(cache), 0u) << "the cache block is freed";
}

TEST_F(KeyDatabaseFiles, FailedOpenLeavesNothingBehind)
{
    Fakes().results["IDOpenBase"] = 2;  // missing
    EXPECT_EQ(OvOpenDatabase("/d/none.ovg", 0), 0);
    EXPECT_EQ(Fakes().calls, (CallLog{R"(IDOpenBase("/d/none.ovg", 0, 0))"}));
    EXPECT_EQ(Fakes().keyCache, nullptr);

    // Nothing is open, so a close has nothing to undo, and an open may follow.
    Fakes().calls.clear();
    EXPECT_EQ(OvCloseDatabase(0), 1);
    EXPECT_TRUE(Fakes().calls.empty());
    Fakes().results.erase("IDOpenBase");
    EXPECT_EQ(OvOpenDatabase("/d/base.ovg", 0), 1);
}

TEST_F(KeyDatabaseFiles, SecondOpenIsRefusedAndKeepsTheFirstCache)
{
    TraceCapture trace;
    ASSERT_EQ(OvOpenDatabase("/d/one.ovg", 0), 1);
    void* cache = Fakes().keyCache;
    Fakes().calls.clear();

    EXPECT_EQ(OvOpenDatabase("/d/two.ovg", 0), 0);
    EXPECT_TRUE(Fakes().calls.empty());
    EXPECT_EQ(Fakes().keyCache, cache);
    EXPECT_EQ(GlobalSize(cache), KeyCacheBytes);
    ASSERT_EQ(trace.lines.size(), 1u);
    EXPECT_EQ(trace.lines[0],
              "OrvanDll: OvOpenDatabase: a database is already open; close it first.");

    EXPECT_EQ(OvCloseDatabase(0), 1);
    EXPECT_EQ(GlobalSize(cache), 0u);
}

TEST_F(KeyDatabaseFiles, CloseWithoutOpenOrTwiceTouchesNothing)
{
    TraceCapture trace;
    EXPECT_EQ(OvCloseDatabase(0), 1);
    ASSERT_EQ(OvOpenDatabase("/d/base.ovg", 0), 1);
    EXPECT_EQ(OvCloseDatabase(0), 1);
    Fakes().calls.clear();
    EXPECT_EQ(OvCloseDatabase(0), 1);
    EXPECT_TRUE(Fakes().calls.empty());
    EXPECT_EQ(trace.lines, (CallLog{"OrvanDll: OvCloseDatabase: no database is open.",
                                    "OrvanDll: OvCloseDatabase: no database is open."}));
}

TEST_F(KeyDatabaseFiles, DeleteAndOptimizePassArgumentsAndResultsThrough)
{
    Fakes().results["OvkDeleteDatabaseFiles"] = 0;
    Fakes().results["OvkOptimizeDatabase"] = 0;
    EXPECT_EQ(OvDeleteDatabaseFiles("/d/a.ovg", "/d/OvIndex/", 5), 0);
    EXPECT_EQ(OvOptimizeDataBase(1, 0), 0);
    Fakes().results.clear();
    EXPECT_EQ(OvDeleteDatabaseFiles(nullptr, nullptr, 7), 1);
    EXPECT_EQ(OvOptimizeDataBase(0, 9), 1);
    EXPECT_EQ(Fakes().calls, (CallLog{R"(OvkDeleteDatabaseFiles("/d/a.ovg", "/d/OvIndex/", 5))",
                                      "OvkOptimizeDatabase(0, 0, 1, 1, 0)",
                                      "OvkDeleteDatabaseFiles(null, null, 7)",
                                      "OvkOptimizeDatabase(0, 0, 1, 0, 9)"}));
}

}  // namespace
