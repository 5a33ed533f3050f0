#include <gtest/gtest.h>

#include "fakes/fake_siblings.h"
#include "orvan.h"
#include "support/capture.h"

namespace {

class VersionHandshake : public ::testing::Test {
protected:
    void SetUp() override { ResetFakes(); }
    BoxCapture boxes;
};

TEST_F(VersionHandshake, DeliversOwnWordsAndAsksBothSiblings)
{
    uint32_t version = 0, second = 99;
    EXPECT_EQ(OvGetVersion(&version, &second), 1);
    EXPECT_EQ(version, 0x00010000u);
    EXPECT_EQ(second, 0u);
    EXPECT_EQ(Fakes().calls, (std::vector<std::string>{"OvkGetVersion", "OvgGetVersion"}));
    EXPECT_TRUE(boxes.boxes.empty());
}

TEST_F(VersionHandshake, NullPointersStillRunTheFullHandshake)
{
    Fakes().gameVersionWord = 0x0000FFFF;
    EXPECT_EQ(OvGetVersion(nullptr, nullptr), 0);
    EXPECT_EQ(Fakes().calls.size(), 2u);
    ASSERT_EQ(boxes.boxes.size(), 1u);
    EXPECT_EQ(boxes.boxes[0].text, "Version conflict: OvGame.dll");
}

TEST_F(VersionHandshake, FloorWithoutCeiling)
{
    struct Case {
        uint32_t keyWord, gameWord;
        int32_t expected;
    };
    for (Case c : {Case{0x00010000, 0x00010000, 1}, Case{0x00020000, 0x00010000, 1},
                   Case{0x00010000, 0xFFFFFFFF, 1}, Case{0x0000FFFF, 0x00010000, 0},
                   Case{0x00010000, 0x0000FFFF, 0}}) {
        ResetFakes();
        Fakes().keyVersionWord = c.keyWord;
        Fakes().gameVersionWord = c.gameWord;
        EXPECT_EQ(OvGetVersion(nullptr, nullptr), c.expected) << std::hex << c.keyWord << " " << c.gameWord;
    }
}

TEST_F(VersionHandshake, BothTooOldShowsKeyBoxThenGameBox)
{
    Fakes().keyVersionWord = 0x0000FFFF;
    Fakes().gameVersionWord = 0;
    EXPECT_EQ(OvGetVersion(nullptr, nullptr), 0);
    ASSERT_EQ(boxes.boxes.size(), 2u);
    EXPECT_EQ(boxes.boxes[0].text, "Version conflict: OvKey.dll");
    EXPECT_EQ(boxes.boxes[1].text, "Version conflict: OvGame.dll");
    for (const CapturedBox& box : boxes.boxes) {
        EXPECT_EQ(box.caption, "Version Error");
        EXPECT_EQ(box.style, 0x10u);
        EXPECT_EQ(box.owner, nullptr);
    }
}

TEST_F(VersionHandshake, AcceptableWordWithFailingResultFailsSilently)
{
    Fakes().keyVersionResult = 0;
    EXPECT_EQ(OvGetVersion(nullptr, nullptr), 0);
    EXPECT_TRUE(boxes.boxes.empty());
}

}  // namespace
