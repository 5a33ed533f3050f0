#include <gtest/gtest.h>

#include "fakes/fake_siblings.h"
#include "orvan.h"
#include "support/capture.h"

namespace {

TEST(VersionHandshake, DeliversOwnWordsAndAsksBothSiblings)
{
    ResetFakes();
    uint32_t version = 0, second = 99;
    EXPECT_EQ(OvGetVersion(&version, &second), 1);
    EXPECT_EQ(version, 0x00010000u);
    EXPECT_EQ(second, 0u);
    EXPECT_EQ(Fakes().calls, (std::vector<std::string>{"OvkGetVersion", "OvgGetVersion"}));
}

TEST(VersionHandshake, FloorWithoutCeilingAndABoxPerSiblingTooOld)
{
    const struct {
        uint32_t keyWord, gameWord;
        int32_t keyResult, expected;
        std::vector<std::string> boxes;
    } cases[] = {
        {0x00020000, 0x00010000, 1, 1, {}},
        {0x00010000, 0xFFFFFFFF, 1, 1, {}},
        {0x0000FFFF, 0x00010000, 1, 0, {"Version conflict: OvKey.dll"}},
        {0x00010000, 0x0000FFFF, 1, 0, {"Version conflict: OvGame.dll"}},
        {0x0000FFFF, 0, 1, 0, {"Version conflict: OvKey.dll", "Version conflict: OvGame.dll"}},
        {0x00010000, 0x00010000, 0, 0, {}},  // an acceptable word with a failing result
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << std::hex << c.keyWord << " " << c.gameWord);
        ResetFakes();
        Fakes().keyVersionWord = c.keyWord;
        Fakes().gameVersionWord = c.gameWord;
        Fakes().keyVersionResult = c.keyResult;
        BoxCapture boxes;
        EXPECT_EQ(OvGetVersion(nullptr, nullptr), c.expected);
        EXPECT_EQ(Fakes().calls.size(), 2u) << "null pointers still run the full handshake";
        ASSERT_EQ(boxes.boxes.size(), c.boxes.size());
        for (size_t i = 0; i < c.boxes.size(); ++i) {
            EXPECT_EQ(boxes.boxes[i].text, c.boxes[i]);
            EXPECT_EQ(boxes.boxes[i].caption, "Version Error");
            EXPECT_EQ(boxes.boxes[i].style, 0x10u);
        }
    }
}

}  // namespace
