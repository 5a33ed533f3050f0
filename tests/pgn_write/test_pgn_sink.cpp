#include <gtest/gtest.h>

#include <string>

#include "pgn/write/pgn_sink.h"
#include "pgn_write/sink_text.h"

namespace {

TEST(PgnPutToken, SeparatorAndLineBreakFollowTheWidth)
{
    const struct {
        int32_t column;
        size_t length;
        std::string ahead;  // what goes out in front of the token
        int32_t newColumn;
    } cases[] = {
        {0, 5, "", 5},         // a line starts without a separator
        {70, 5, " ", 76},      // 70 + 5 + 1 = 76 is below 77: the line ends at character 76
        {71, 5, "\n", 5},      // character 77 would be reached: a new line
        {10, 90, "\n", 90},    // too long for any line: alone on an overlong one
        {12, 0, " ", 13},      // an empty token leaves its separator
    };
    for (const auto& c : cases) {
        PgnSink sink;
        std::string token(c.length, 'x');
        EXPECT_EQ(PgnPutToken(sink, token, c.column, 77), c.newColumn) << c.column << "+" << c.length;
        EXPECT_EQ(TakeText(sink), c.ahead + token) << c.column << "+" << c.length;
    }
}

TEST(PgnSinkMemory, GrowsInStepsAndHandsOverTheTerminatedText)
{
    PgnSink sink;
    std::string expected;
    for (int i = 0; i < 8000; ++i) {
        std::string piece = std::to_string(i);
        PgnPutText(sink, piece);
        PgnPutChar(';', sink);
        expected += piece + ";";
    }
    ASSERT_GT(expected.size(), 2 * PgnTextStep);

    HGLOBAL block = sink.TakeMemoryText();
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(GlobalSize(block) % PgnTextStep, 0u);
    EXPECT_EQ(std::string(static_cast<const char*>(GlobalLock(block))), expected);
    EXPECT_EQ(GlobalUnlock(block), 0) << "the block is handed over unlocked";
    EXPECT_EQ(GlobalFree(block), nullptr);
    EXPECT_EQ(sink.TakeMemoryText(), nullptr) << "a sink hands its block over once";

    // The terminator of a full block grows it.
    PgnSink full;
    PgnPutText(full, std::string(PgnTextStep, 'a'));
    block = full.TakeMemoryText();
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(GlobalSize(block), 2 * PgnTextStep);
    EXPECT_EQ(static_cast<const char*>(GlobalLock(block))[PgnTextStep], '\0');
    GlobalUnlock(block);
    GlobalFree(block);
}

TEST(PgnPrintf, CutsToItsRoom)
{
    PgnSink sink;
    PgnPrintf(sink, "[%s \"%u\"]\n%s", "SetUp", 1u, std::string(600, 'z').c_str());
    EXPECT_EQ(TakeText(sink), "[SetUp \"1\"]\n" + std::string(PgnPrintfSize - 13, 'z'));
}

}  // namespace
