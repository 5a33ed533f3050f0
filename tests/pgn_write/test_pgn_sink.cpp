#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <thread>

#include "pgn/write/pgn_sink.h"
#include "pgn_write/sink_text.h"

namespace {

struct TokenCase {
    int32_t column;
    int32_t length;
    const char* written;  // what goes out ahead of the token
    int32_t newColumn;
};

TEST(PgnPutToken, SeparatorAndLineBreakFollowTheWidth)
{
    const TokenCase cases[] = {
        {0, 5, "", 5},     // a line starts without a separator
        {70, 5, " ", 76},  // 70 + 5 + 1 = 76 is below 77: the line ends at character 76
        {71, 5, "\n", 5},  // 77 would be reached: a new line
        {75, 1, "\n", 1},
        {74, 1, " ", 76},
        {10, 90, "\n", 90},  // too long for any line: alone on an overlong one
        {0, 90, "", 90},
    };
    for (const TokenCase& c : cases) {
        PgnSink sink;
        std::string token(static_cast<size_t>(c.length), 'x');
        EXPECT_EQ(PgnPutToken(sink, token, c.column, 77), c.newColumn) << c.column << "+" << c.length;
        std::string expected = c.written;
        expected.append(token);
        EXPECT_EQ(TakeText(sink), expected) << c.column << "+" << c.length;
    }
}

TEST(PgnPutToken, EmptyTokenWritesOnlyItsSeparator)
{
    PgnSink sink;
    EXPECT_EQ(PgnPutToken(sink, "", 0, 77), 0);
    EXPECT_EQ(PgnPutToken(sink, "", 12, 77), 13);
    EXPECT_EQ(TakeText(sink), " ");
}

TEST(PgnSinkMemory, GrowsInStepsAndEndsWithTerminator)
{
    PgnSink sink;
    ASSERT_TRUE(sink.HasMemoryText());
    std::string expected;
    for (int i = 0; i < 8000; ++i) {
        std::string piece = std::to_string(i) + ",";
        PgnPutText(sink, piece);
        PgnPutChar(';', sink);
        expected += piece + ";";
    }
    ASSERT_GT(expected.size(), 2 * PgnTextStep);
    EXPECT_EQ(sink.MemoryTextUsed(), expected.size());

    HGLOBAL block = sink.TakeMemoryText();
    ASSERT_NE(block, nullptr);
    size_t size = GlobalSize(block);
    EXPECT_EQ(size % PgnTextStep, 0u);
    EXPECT_GT(size, expected.size()) << "room for the terminator";
    const char* data = static_cast<const char*>(GlobalLock(block));
    EXPECT_EQ(std::string(data), expected);
    EXPECT_EQ(GlobalUnlock(block), 0) << "the block is handed over unlocked";
    EXPECT_EQ(GlobalFree(block), nullptr);

    EXPECT_EQ(sink.TakeMemoryText(), nullptr) << "a sink hands its block over once";
    PgnPutChar('x', sink);  // a sink without a block drops bytes
}

TEST(PgnSinkMemory, TextFillingTheBlockExactlyGrowsForTheTerminator)
{
    PgnSink sink;
    PgnPutText(sink, std::string(PgnTextStep, 'a'));
    HGLOBAL block = sink.TakeMemoryText();
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(GlobalSize(block), 2 * PgnTextStep);
    const char* data = static_cast<const char*>(GlobalLock(block));
    EXPECT_EQ(data[PgnTextStep], '\0');
    GlobalUnlock(block);
    GlobalFree(block);
}

TEST(PgnSinkFile, CollectsBytesAndHandsThemToTheStream)
{
    std::FILE* file = std::tmpfile();
    ASSERT_NE(file, nullptr);
    std::string expected;
    {
        PgnSink sink(file);
        EXPECT_FALSE(sink.HasMemoryText());
        EXPECT_EQ(sink.TakeMemoryText(), nullptr);
        for (int i = 0; i < 3000; ++i) {
            std::string number = std::to_string(i);
            PgnPutChar('<', sink);
            PgnPutText(sink, number);
            expected += '<';
            expected += number;
        }
        std::string large(20000, 'L');  // more than the sink collects at once
        PgnPutText(sink, large);
        PgnPutChar('>', sink);
        expected += large + ">";
    }
    std::rewind(file);
    std::string written;
    for (int c; (c = std::fgetc(file)) != EOF;)
        written += static_cast<char>(c);
    std::fclose(file);
    EXPECT_EQ(written, expected);
}

TEST(PgnPrintf, FormatsAndCutsToItsRoom)
{
    PgnSink sink;
    PgnPrintf(sink, "[%s \"%u\"]\n", "SetUp", 1u);
    PgnPrintf(sink, "%s", std::string(600, 'z').c_str());
    std::string text = TakeText(sink);
    EXPECT_EQ(text, "[SetUp \"1\"]\n" + std::string(PgnPrintfSize - 1, 'z'));
}

TEST(PgnSinkMemory, SinksOnTwoThreadsStayApart)
{
    auto writeMany = [](char c, std::string* out) {
        PgnSink sink;
        int32_t column = 0;
        for (int i = 0; i < 20000; ++i)
            column = PgnPutToken(sink, std::string(1 + i % 7, c), column, 77);
        *out = TakeText(sink);
    };
    std::string first, second;
    std::thread one(writeMany, 'a', &first);
    std::thread two(writeMany, 'b', &second);
    one.join();
    two.join();
    std::string expected;
    writeMany('a', &expected);
    EXPECT_EQ(first, expected);
    EXPECT_EQ(second.find('a'), std::string::npos);
    EXPECT_EQ(second.size(), first.size());
}

}  // namespace
