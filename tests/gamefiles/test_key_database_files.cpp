#include <algorithm>

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

TEST_F(KeyDatabaseFiles, OpenLendsAZeroedCacheThatCloseTakesBackAndFrees)
{
    TraceCapture trace;
    ASSERT_EQ(OvOpenDatabase("/d/base.ovg", 1), 1);
    void* cache = Fakes().keyCache;
    ASSERT_NE(cache, nullptr);
    EXPECT_EQ(GlobalSize(cache), KeyCacheBytes);
    const auto* bytes = static_cast<const unsigned char*>(cache);
    EXPECT_TRUE(std::all_of(bytes, bytes + KeyCacheBytes, [](unsigned char b) { return b == 0; }));
    EXPECT_EQ(Fakes().calls, (CallLog{R"(IDOpenBase("/d/base.ovg", 1, 0))", "DbsKeyCacheOn(ptr, 32)"}));

    // A second open is refused and keeps the first cache.
    Fakes().calls.clear();
    EXPECT_EQ(OvOpenDatabase("/d/two.ovg", 0), 0);
    EXPECT_TRUE(Fakes().calls.empty());
    EXPECT_EQ(Fakes().keyCache, cache);
    EXPECT_EQ(trace.lines, CallLog{"OrvanDll: OvOpenDatabase: a database is already open; close it first."});

    EXPECT_EQ(OvCloseDatabase(0), 1);
    EXPECT_EQ(Fakes().calls, (CallLog{"DbsKeyCacheOff()", "IDCloseBase(0)"}));
    EXPECT_EQ(GlobalSize(cache), 0u) << "the cache block is freed";
    Fakes().calls.clear();
    EXPECT_EQ(OvCloseDatabase(0), 1) << "closing twice touches nothing";
    EXPECT_TRUE(Fakes().calls.empty());
    EXPECT_EQ(trace.lines.back(), "OrvanDll: OvCloseDatabase: no database is open.");
}

TEST_F(KeyDatabaseFiles, FailedOpenLeavesNothingBehind)
{
    Fakes().results["IDOpenBase"] = 2;  // missing
    EXPECT_EQ(OvOpenDatabase("/d/none.ovg", 0), 0);
    EXPECT_EQ(Fakes().calls, (CallLog{R"(IDOpenBase("/d/none.ovg", 0, 0))"}));
    EXPECT_EQ(Fakes().keyCache, nullptr);
    Fakes().calls.clear();
    EXPECT_EQ(OvCloseDatabase(0), 1);
    EXPECT_TRUE(Fakes().calls.empty());
    Fakes().results.erase("IDOpenBase");
    EXPECT_EQ(OvOpenDatabase("/d/base.ovg", 0), 1) << "an open may follow";
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
                                      "OvkOptimizeDatabase(0, 0, 1, 1, 0)", "OvkDeleteDatabaseFiles(null, null, 7)",
                                      "OvkOptimizeDatabase(0, 0, 1, 0, 9)"}));
}

}  // namespace
