// Key browsing and sort indexes against the recording fakes: arguments passed
// on, texts in the host's code page, child key signs, view lines, error box.
#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <functional>
#include <map>
#include <numeric>

#include "fakes/fake_key_calls.h"
#include "fakes/fake_siblings.h"
#include "orvan.h"
#include "support/capture.h"

namespace {

using Log = std::vector<std::string>;
using Results = std::vector<int64_t>;
constexpr OvGameFile File = 100;

class KeyCalls : public testing::Test {
protected:
    void SetUp() override
    {
        ResetFakes();
        ResetKeyFakes();
    }
};

// Each row: the answers of the fakes, the calls into the library, their
// results and the driver calls they make, in order.
TEST_F(KeyCalls, PassedThroughOrRefusedBeforeTheDriver)
{
    struct Row {
        const char* name;
        std::map<std::string, int32_t, std::less<>> answers;
        std::function<Results()> call;
        Results results;
        Log calls;
    };
    const auto sort = [](int32_t count, int32_t kind, int32_t order) {
        return OvIndexSort(File, 555, 2, 1, count, kind, order);
    };
    const Row rows[] = {
        {"key iteration and moves",
         {{"OvkGetFirstKey", 4711}, {"OvkGetNextKey", 4712}, {"OvkGetPreviousKey", 4713}, {"DbsGetKeyMove", 4714}},
         [] { return Results{OvGetFirstKey(-7, 2), OvGetNextKey(-7, 2), OvGetPrevKey(-7, 2), OvGetKeyMove(-7, 2)}; },
         {4711, 4712, 4713, 4714},
         {"OvkGetFirstKey(-7, 2)", "OvkGetNextKey(-7, 2)", "OvkGetPreviousKey(-7, 2)", "DbsGetKeyMove(-7, 0, 2)"}},
        // The board is converted as the game walking converts its boards.
        {"key position", {}, [] { sPosition position; return Results{OvGetKeyPosition(9, &position)}; }, {1},
         {"OvkGetKeyPosition(9, ptr)"}},
        {"only the status index can be deleted", {{"OvgIndexDelete", -1}},
         [] { return Results{OvIndexDelete(File, HdrWhite, "/d"), OvIndexDelete(File, HdrStatus, "/d")}; },
         {-1, -1}, {"OvgIndexDelete(100, 16384, \"/d\")"}},
        // Arguments reach the driver in its own order; composites sort as a player.
        {"sort arguments", {}, [&] { return Results{sort(10, HdrBlackFull, 1)}; }, {OV_SORT_DONE},
         {"OvgIndexSort(100, 2, 1, 10, 2, 1, 555)"}},
        {"descending is -2, any other order ascending", {{"OvgIndexSort", 5}},
         [&] { return Results{sort(5, HdrDate, 0), sort(5, HdrDate, -3)}; }, {OV_SORT_DONE, OV_SORT_DONE},
         {"OvgIndexSort(100, 2, 1, 5, 16, -2, 555)", "OvgIndexSort(100, 2, 1, 5, 16, 1, 555)"}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        ResetFakes();
        Fakes().results.insert(row.answers.begin(), row.answers.end());
        EXPECT_EQ(row.call(), row.results);
        EXPECT_EQ(Fakes().calls, row.calls);
    }
}

TEST_F(KeyCalls, KeyInfoTranslatesEachTextAndLeavesTheFirstWord)
{
    KeyFakes().keycode = "C\x82";             // OEM e acute
    KeyFakes().name = "Ca\x87o-Kann \x81";    // c cedilla, u umlaut
    KeyFakes().remark = std::string(300, 'r');
    Fakes().results["DbsGetKeyDataInfo"] = 5;
    sKeyInfo info;
    std::memset(&info, 0x55, sizeof info);
    EXPECT_EQ(OvGetKeyInfo(12, &info), 5);
    EXPECT_EQ(info.firstWord, 0x55555555);
    EXPECT_EQ(std::string(info.keycode) + "|" + info.name, "C\xE9|Ca\xE7o-Kann \xFC");
    EXPECT_EQ(std::strlen(info.remark), 255u);
    EXPECT_EQ(Fakes().calls, (Log{"DbsGetKeycode(12, ptr)", "OvkGetKeyName(12, ptr, 0, 256)",
                                  "DbsGetRemark(12, ptr)", "DbsGetKeyDataInfo(12, ptr)"}));
}

TEST_F(KeyCalls, ChildKeysArriveAsKeyNumbersAndGamesAsDelivered)
{
    KeyFakes().searchResult = {-5, -9, -INT32_MAX};
    int32_t children[4] = {1, 1, 1, 1};
    EXPECT_EQ(OvGetChildKeys(2, children, 4), 3);
    EXPECT_EQ(std::vector<int32_t>(children, children + 4), (std::vector<int32_t>{5, 9, INT32_MAX, 1}));
    KeyFakes().searchResult = {3, 8};
    int32_t games[2] = {};
    EXPECT_EQ(OvGetKeyGames(2, games, 2), 2);
    EXPECT_EQ(std::vector<int32_t>(games, games + 2), (std::vector<int32_t>{3, 8}));
    EXPECT_EQ(Fakes().calls, (Log{"DbsSearchKey(2, 1, 1, ptr, 4)", "DbsSearchKey(2, 2, 1, ptr, 2)"}));

    // A failure leaves the array alone, and a database that claims more than
    // the room never makes us negate past it.
    KeyFakes().searchResult = {};
    int32_t two[2] = {-4, -6};
    Fakes().results["DbsSearchKey"] = -1;
    EXPECT_EQ(OvGetChildKeys(2, two, 2), -1);
    EXPECT_EQ(std::vector<int32_t>(two, two + 2), (std::vector<int32_t>{-4, -6}));
    KeyFakes().searchResult = {-1, -2};
    Fakes().results["DbsSearchKey"] = 50;
    EXPECT_EQ(OvGetChildKeys(2, two, 1), 50);
    EXPECT_EQ(std::vector<int32_t>(two, two + 2), (std::vector<int32_t>{1, -6}));
}

TEST_F(KeyCalls, KeyViewChainsLinesInOneBracket)
{
    std::vector<sKeyViewLine> lines(25);
    for (sKeyViewLine& line : lines)
        std::memset(&line, 0x7F, sizeof line);
    std::vector<int32_t> keys(25);
    std::iota(keys.begin(), keys.end(), 100);
    keys[3] = 0;
    EXPECT_EQ(OvGetKeyView(0, keys.data(), lines.data(), 0, 25), 1);
    EXPECT_EQ(Fakes().calls.size(), 2u + 19u);  // bracketed; 20 lines, one of them blank
    // key, parent and level: the fifth line is built on the blank fourth.
    const auto line = [&](size_t i) { return std::vector<int32_t>{lines[i].key, lines[i].parent, lines[i].level}; };
    EXPECT_EQ(line(2), (std::vector<int32_t>{102, 101, 3}));
    EXPECT_EQ(line(4), (std::vector<int32_t>{104, 0, 1}));
    const sKeyViewLine zero{};
    EXPECT_EQ(std::memcmp(&lines[3], &zero, sizeof zero), 0);
    EXPECT_EQ(std::pair(lines[19].key, lines[20].key), std::pair(119, 0x7F7F7F7F));  // beyond 20: untouched

}

TEST_F(KeyCalls, IndexCreateShowsTheSystemErrorOfAMissingDirectory)
{
    char pattern[] = "/tmp/orvan-keys-XXXXXX";
    ASSERT_NE(mkdtemp(pattern), nullptr);
    const std::string scratch = pattern;
    BoxCapture boxes;
    EXPECT_EQ(OvIndexCreateUpdate(File, (scratch + "/missing/idx").c_str(), 0, 0, 0, 0, 0), 0);
    EXPECT_TRUE(Fakes().calls.empty());
    std::filesystem::remove_all(scratch);
    ASSERT_EQ(boxes.boxes.size(), 1u);
    EXPECT_EQ(boxes.boxes[0].caption + ": " + boxes.boxes[0].text, "Error 2: No such file or directory");
}

}  // namespace
