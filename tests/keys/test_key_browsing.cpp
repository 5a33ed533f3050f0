// Key browsing against the recording fakes: what is passed on unchanged,
// the texts turned into the host's code page, the sign of child keys and
// the chaining of view lines.
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "fakes/fake_key_calls.h"
#include "fakes/fake_siblings.h"
#include "orvan.h"

namespace {

class KeyBrowsing : public testing::Test {
protected:
    void SetUp() override
    {
        ResetFakes();
        ResetKeyFakes();
    }
};

TEST_F(KeyBrowsing, SteppingAndMovesPassArgumentsAndResultsThrough)
{
    struct Case {
        int32_t (*call)(int32_t, int32_t);
        const char* function;
        const char* logged;
    };
    const Case cases[] = {
        {OvGetFirstKey, "OvkGetFirstKey", "OvkGetFirstKey(-7, 2)"},
        {OvGetNextKey, "OvkGetNextKey", "OvkGetNextKey(-7, 2)"},
        {OvGetPrevKey, "OvkGetPreviousKey", "OvkGetPreviousKey(-7, 2)"},
        {OvGetKeyMove, "DbsGetKeyMove", "DbsGetKeyMove(-7, 0, 2)"},
    };
    for (const Case& c : cases) {
        ResetFakes();
        Fakes().results[c.function] = 4711;
        EXPECT_EQ(c.call(-7, 2), 4711) << c.function;
        EXPECT_EQ(Fakes().calls, std::vector<std::string>{c.logged});
    }
}

TEST_F(KeyBrowsing, KeyInfoTranslatesEachTextAndLeavesTheFirstWord)
{
    KeyFakes().keycode = "C\x82";             // OEM e acute
    KeyFakes().name = "Ca\x87o-Kann \x81";    // c cedilla, u umlaut
    KeyFakes().remark = std::string(300, 'r');
    Fakes().results["DbsGetKeyDataInfo"] = 5;
    sKeyInfo info;
    std::memset(&info, 0x55, sizeof info);
    EXPECT_EQ(OvGetKeyInfo(12, &info), 5);
    EXPECT_EQ(info.firstWord, 0x55555555);
    EXPECT_STREQ(info.keycode, "C\xE9");
    EXPECT_STREQ(info.name, "Ca\xE7o-Kann \xFC");
    EXPECT_EQ(std::strlen(info.remark), 255u);
    EXPECT_EQ(info.data.key, 12);
    const std::vector<std::string> order = {"DbsGetKeycode(12, ptr)", "OvkGetKeyName(12, ptr, 0, 256)",
                                            "DbsGetRemark(12, ptr)", "DbsGetKeyDataInfo(12, ptr)"};
    EXPECT_EQ(Fakes().calls, order);
    EXPECT_EQ(OvGetKeyInfo(12, nullptr), 0);
}

TEST_F(KeyBrowsing, KeyPositionIsTheConvertedBoard)
{
    BoardRecord& board = KeyFakes().keyBoard;
    board.squares[BoardIndex(4, 0)] = DrvWhiteKing;
    board.squares[BoardIndex(4, 7)] = DrvBlackKing;
    board.squares[BoardIndex(0, 6)] = DrvBlackPawn;
    board.sideToMove = 1;
    board.ply = 2;
    sPosition position;
    std::memset(&position, 0x33, sizeof position);
    EXPECT_EQ(OvGetKeyPosition(9, &position), 1);
    EXPECT_EQ(position.board[4], 14);
    EXPECT_EQ(position.board[60], 6);
    EXPECT_EQ(position.board[48], 1);
    EXPECT_EQ(position.board[28], 0);
    EXPECT_EQ(position.sideToMove, 0);
    EXPECT_EQ(position.epSquare, 64);
    EXPECT_EQ(Fakes().calls.front(), "OvkGetKeyPosition(9, ptr)");
    EXPECT_EQ(OvGetKeyPosition(9, nullptr), 0);
}

TEST_F(KeyBrowsing, ChildKeysArriveAsKeyNumbersAndGamesAsDelivered)
{
    KeyFakes().searchResult = {-5, -9, -INT32_MAX};
    int32_t children[4] = {1, 1, 1, 1};
    EXPECT_EQ(OvGetChildKeys(2, children, 4), 3);
    EXPECT_EQ(std::vector<int32_t>(children, children + 4), (std::vector<int32_t>{5, 9, INT32_MAX, 1}));
    EXPECT_EQ(Fakes().calls.back(), "DbsSearchKey(2, 1, 1, ptr, 4)");
    KeyFakes().searchResult = {3, 8};
    int32_t games[2] = {};
    EXPECT_EQ(OvGetKeyGames(2, games, 2), 2);
    EXPECT_EQ(std::vector<int32_t>(games, games + 2), (std::vector<int32_t>{3, 8}));
    EXPECT_EQ(Fakes().calls.back(), "DbsSearchKey(2, 2, 1, ptr, 2)");

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

TEST_F(KeyBrowsing, KeyViewChainsLinesInOneBracket)
{
    std::vector<sKeyViewLine> lines(25);
    for (sKeyViewLine& line : lines)
        std::memset(&line, 0x7F, sizeof line);
    std::vector<int32_t> keys(25);
    for (int i = 0; i < 25; ++i)
        keys[size_t(i)] = 100 + i;
    keys[3] = 0;
    EXPECT_EQ(OvGetKeyView(0, keys.data(), lines.data(), 0, 25), 1);
    EXPECT_EQ(Fakes().calls.front(), "OvkFileAction(1)");
    EXPECT_EQ(Fakes().calls.back(), "OvkFileAction(0)");
    EXPECT_EQ(Fakes().calls.size(), 2u + 19u);  // 20 lines, one of them blank
    EXPECT_EQ(lines[0].key, 100);
    EXPECT_EQ(lines[0].parent, 0);  // an all-zero previous line
    EXPECT_EQ(lines[0].level, 1);
    EXPECT_EQ(lines[2].parent, 101);
    EXPECT_EQ(lines[2].level, 3);
    sKeyViewLine zero{};
    EXPECT_EQ(std::memcmp(&lines[3], &zero, sizeof zero), 0);
    EXPECT_EQ(lines[4].parent, 0);  // built on the blank line
    EXPECT_EQ(lines[4].level, 1);
    EXPECT_EQ(lines[19].key, 119);
    EXPECT_EQ(lines[20].key, 0x7F7F7F7F);  // beyond 20: untouched

    ResetFakes();
    EXPECT_EQ(OvGetKeyView(0, nullptr, nullptr, 0, 0), 1) << "an empty view only brackets";
    EXPECT_EQ(Fakes().calls, (std::vector<std::string>{"OvkFileAction(1)", "OvkFileAction(0)"}));
    ResetFakes();
    EXPECT_EQ(OvGetKeyView(0, nullptr, nullptr, 0, 3), 0);
    EXPECT_TRUE(Fakes().calls.empty());
}

}  // namespace
