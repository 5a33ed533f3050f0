#include "gamefiles_fixture.h"
#include "support/capture.h"

namespace {

class StoredGames : public FakeGameBufferTest {
protected:
    // Logs, for each call into the siblings, whether the library's lock was held.
    void WatchLock()
    {
        Fakes().onCall = [this](const std::string& call) {
            lockDuring.push_back(call + (LibraryMutexHeld() ? " locked" : " free"));
        };
    }

    CallLog lockDuring;
};

TEST_F(StoredGames, AllocFailureShowsTheBoxAndFreeAlwaysSaysDone)
{
    BoxCapture boxes;
    EXPECT_NE(game, 0u);
    Fakes().results["IGGameOpenGame"] = 0;
    EXPECT_EQ(OvAllocGameBuffer(), 0u);
    ASSERT_EQ(boxes.boxes.size(), 1u);
    EXPECT_EQ(boxes.boxes[0].text, "Cannot allocate game buffer");
    EXPECT_EQ(boxes.boxes[0].caption, "ERROR");
    EXPECT_EQ(boxes.boxes[0].style, 0u);
    EXPECT_EQ(boxes.boxes[0].owner, nullptr);

    Fakes().calls.clear();
    EXPECT_EQ(OvFreeGameBuffer(game), 1);
    EXPECT_EQ(OvFreeGameBuffer(game), 1);
    EXPECT_EQ(OvFreeGameBuffer(0), 1);
    EXPECT_EQ(Fakes().calls, (CallLog{"IGGameCloseGame(1)", "IGGameCloseGame(1)", "IGGameCloseGame(0)"}));
}

TEST_F(StoredGames, ReadsHoldTheLockForTheLoadOnlyAndRecordTheSourceAfter)
{
    WatchLock();
    EXPECT_EQ(OvReadGame(game, 3, 12), 1);
    EXPECT_EQ(Fakes().games[game].sourceNumber, 12);
    EXPECT_EQ(OvReadGameHeader(game, 3, 40), 1);
    EXPECT_EQ(Fakes().games[game].sourceNumber, 40);
    EXPECT_EQ(lockDuring,
              (CallLog{"OvgLoadGame(1, 3, 12, 0) locked", "IGGamePutSourceLoadnumber(1, 12) free",
                       "OvgLoadGameHeader(1, 3, 40) locked", "IGGamePutSourceLoadnumber(1, 40) free"}));

    // Refused reads leave the source number and release the lock.
    Fakes().onCall = nullptr;
    Fakes().results["OvgLoadGame"] = 0;
    Fakes().results["OvgLoadGameHeader"] = 0;
    EXPECT_EQ(OvReadGame(game, 3, 99), 0);
    EXPECT_EQ(OvReadGameHeader(game, 3, 99), 0);
    EXPECT_FALSE(LibraryMutexHeld());
    EXPECT_EQ(Fakes().games[game].sourceNumber, 40);
    // A driver answer other than 0 or 1 still reads as success.
    Fakes().results["OvgLoadGame"] = -7;
    EXPECT_EQ(OvReadGame(game, 3, 6), 1);
    // Unknown handles get the driver's refusal, with no source number put.
    Fakes().calls.clear();
    EXPECT_EQ(OvReadGameHeader(777, 3, 6), 0);
    EXPECT_EQ(Fakes().calls, (CallLog{"OvgLoadGameHeader(777, 3, 6)"}));
}

TEST_F(StoredGames, WriteChoosesTheStoreUnderOneHoldOfTheLock)
{
    WatchLock();
    int32_t out = 0;
    Fakes().results["OvgWriteGame"] = 17;
    EXPECT_EQ(OvWriteGame(game, 4, &out), 17);
    EXPECT_EQ(out, 17);

    Fakes().results["IDIsDatabaseGamefile"] = 1;
    Fakes().results["OvkSaveToDatabase"] = 0;
    out = -5;
    EXPECT_EQ(OvWriteGame(game, 4, &out), 0);
    EXPECT_EQ(out, -5) << "the database store leaves `out` alone";
    EXPECT_EQ(
        lockDuring,
        (CallLog{"IDIsDatabaseGamefile(4) locked", "OvgWriteGame(1, 4, 0, ptr) locked",
                 "IDIsDatabaseGamefile(4) locked", "OvkSaveToDatabase(1, 4, 0, 0, 1) locked"}));
    EXPECT_FALSE(LibraryMutexHeld());
}

TEST_F(StoredGames, WriteMayBeCalledWithTheLockAlreadyHeld)
{
    // A host callback inside a key search runs under the lock and may write.
    LibraryLock held(LibraryMutex());
    EXPECT_EQ(OvWriteGame(game, 4, nullptr), 1);
    EXPECT_EQ(Fakes().calls, (CallLog{"IDIsDatabaseGamefile(4)", "OvgWriteGame(1, 4, 0, null)"}));
}

TEST_F(StoredGames, DeleteAndUndeleteKeepTheDatabaseCountOfDeletedGames)
{
    struct Case {
        bool undelete;
        int32_t driverAnswer;
        int32_t isDatabaseFile;
        int32_t expected;
        CallLog calls;
    };
    for (const Case& c : {
             Case{false, 0, 0, 1, {"OvgDeleteGame(6, 2)", "IDIsDatabaseGamefile(6)"}},
             Case{false, 0, 1, 1,
                  {"OvgDeleteGame(6, 2)", "IDIsDatabaseGamefile(6)", "DbsAdjustDeletedGames(1)"}},
             Case{false, -1, 1, 0, {"OvgDeleteGame(6, 2)"}},
             Case{false, 1, 1, 0, {"OvgDeleteGame(6, 2)"}},
             Case{true, 0, 0, 1, {"OvgUndeleteGame(6, 2)", "IDIsDatabaseGamefile(6)"}},
             Case{true, 0, 1, 1,
                  {"OvgUndeleteGame(6, 2)", "IDIsDatabaseGamefile(6)", "DbsAdjustDeletedGames(-1)"}},
             Case{true, -1, 1, 0, {"OvgUndeleteGame(6, 2)"}},
         }) {
        ResetFakes();
        Fakes().results["OvgDeleteGame"] = c.driverAnswer;
        Fakes().results["OvgUndeleteGame"] = c.driverAnswer;
        Fakes().results["IDIsDatabaseGamefile"] = c.isDatabaseFile;
        EXPECT_EQ(c.undelete ? OvUndeleteGame(6, 2) : OvDeleteGame(6, 2), c.expected);
        EXPECT_EQ(Fakes().calls, c.calls);
    }
}

}  // namespace
