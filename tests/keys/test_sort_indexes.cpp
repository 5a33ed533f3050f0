// The sort index operations against the recording fakes: the directory
// step with its error box, the kind table, the direction and the result codes.
#include <gtest/gtest.h>

#include <sys/stat.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "fakes/fake_key_calls.h"
#include "fakes/fake_siblings.h"
#include "orvan.h"
#include "support/capture.h"

namespace {

constexpr OvGameFile File = 100;

class SortIndexes : public testing::Test {
protected:
    void SetUp() override
    {
        ResetFakes();
        char pattern[] = "/tmp/orvan-keys-XXXXXX";
        ASSERT_NE(mkdtemp(pattern), nullptr);
        scratch_ = pattern;
    }
    void TearDown() override { std::filesystem::remove_all(scratch_); }

    std::string scratch_;
};

TEST_F(SortIndexes, CreateMakesTheDirectoryOnceOrShowsTheSystemError)
{
    const std::string directory = scratch_ + "/idx/";
    Fakes().results["OvgIndexCreate"] = 7;
    BoxCapture boxes;
    EXPECT_EQ(OvIndexCreateUpdate(File, directory.c_str(), 3, 4, 5, 6, 8), 7);
    EXPECT_TRUE(std::filesystem::is_directory(directory));
    EXPECT_EQ(OvIndexCreateUpdate(File, directory.c_str(), 3, 4, 5, 6, 8), 7);
    const std::string call = "OvgIndexCreate(100, 3, 4, \"" + directory + "\", 5, 6, 8)";
    EXPECT_EQ(Fakes().calls, (std::vector<std::string>{call, call}));
    EXPECT_TRUE(boxes.boxes.empty());

    ResetFakes();
    EXPECT_EQ(OvIndexCreateUpdate(File, (scratch_ + "/missing/idx").c_str(), 0, 0, 0, 0, 0), 0);
    ASSERT_EQ(boxes.boxes.size(), 1u);
    EXPECT_EQ(boxes.boxes[0].caption, "Error 2");
    EXPECT_EQ(boxes.boxes[0].text, "No such file or directory");
    EXPECT_EQ(boxes.boxes[0].style, 0x40u);
    EXPECT_EQ(boxes.boxes[0].owner, nullptr);
    EXPECT_EQ(OvIndexCreateUpdate(File, nullptr, 0, 0, 0, 0, 0), 0);
    EXPECT_TRUE(Fakes().calls.empty());
}

TEST_F(SortIndexes, OnlyTheStatusIndexCanBeDeleted)
{
    EXPECT_EQ(OvIndexDelete(File, HdrWhite, "/d"), -1);
    EXPECT_TRUE(Fakes().calls.empty());
    Fakes().results["OvgIndexDelete"] = -1;
    EXPECT_EQ(OvIndexDelete(File, HdrStatus, "/d"), -1);
    EXPECT_EQ(Fakes().calls, (std::vector<std::string>{"OvgIndexDelete(100, 16384, \"/d\")"}));
}

TEST_F(SortIndexes, KindsOutsideTheTableOrWithoutACodeNeverReachTheDriver)
{
    // Arguments reach the driver in its own order; composites sort as a player.
    EXPECT_EQ(OvIndexSort(File, 555, 2, 1, 10, HdrBlackFull, 1), OV_SORT_DONE);
    EXPECT_EQ(Fakes().calls, std::vector<std::string>{"OvgIndexSort(100, 2, 1, 10, 2, 1, 555)"});
    for (const int32_t kind : {0, 13, 14, 22, 23, 99, 104, -5}) {
        ResetFakes();
        EXPECT_EQ(OvIndexSort(File, 555, 1, 0, 10, kind, 1),
                  kind == 13 || kind == 14 ? OV_SORT_NOT_SORTABLE : OV_SORT_UNKNOWN_KIND);
        EXPECT_TRUE(Fakes().calls.empty());
    }
}

TEST_F(SortIndexes, OrderAndDriverResultsBecomeResultCodes)
{
    OvIndexSort(File, 0, 0, 0, 5, HdrDate, 0);
    EXPECT_EQ(Fakes().calls.back(), "OvgIndexSort(100, 0, 0, 5, 16, -2, 0)");
    OvIndexSort(File, 0, 0, 0, 5, HdrDate, -3);
    EXPECT_EQ(Fakes().calls.back(), "OvgIndexSort(100, 0, 0, 5, 16, 1, 0)");
    struct Case {
        int32_t count, driver, result;
    };
    const Case cases[] = {
        {0, 0, OV_SORT_NO_GAMES}, {0, 1, OV_SORT_DONE}, {5, 0, OV_SORT_NO_GAMES}, {5, -1, OV_SORT_FAILED},
        {5, 4, OV_SORT_FAILED},   {5, 5, OV_SORT_DONE}, {5, 9, OV_SORT_DONE},    {0, -2, OV_SORT_FAILED},
    };
    for (const Case& c : cases) {
        Fakes().results["OvgIndexSort"] = c.driver;
        EXPECT_EQ(OvIndexSort(File, 0, 0, 0, c.count, HdrWhite, 1), c.result) << c.count << " " << c.driver;
    }
}

}  // namespace
