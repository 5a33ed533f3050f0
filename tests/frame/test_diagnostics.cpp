#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "frame/copy_bounded.h"
#include "frame/diagnostics.h"
#include "support/capture.h"

namespace {

TEST(CopyBounded, StopsAtSizeAndTerminates)
{
    char dest[8];
    std::memset(dest, 'x', sizeof dest);
    CopyBounded(dest, "abc", 0);
    EXPECT_EQ(dest[0], 'x') << "size 0 writes nothing";
    CopyBounded(dest, "abc", -5);
    EXPECT_EQ(dest[0], 'x') << "a negative size writes nothing";
    CopyBounded(dest, "abc", 1);
    EXPECT_EQ(dest[0], '\0');
    EXPECT_EQ(dest[1], 'x') << "size 1 writes only the terminator";
    CopyBounded(dest, "abcdefghij", 5);
    EXPECT_STREQ(dest, "abcd");
    EXPECT_EQ(dest[5], 'x');
    CopyBounded(dest, "ab", 8);
    EXPECT_STREQ(dest, "ab");
}

TEST(DebugTrace, PrefixesEachRecordAndAddsNoLineEnd)
{
    TraceCapture trace;
    DebugTrace("Game result set to %s.\n", "1-0");
    DebugTrace("skipping empty game (no players, moves and result).");
    DebugTrace("%d%c", 42, '!');
    ASSERT_EQ(trace.lines.size(), 3u);
    EXPECT_EQ(trace.lines[0], "OrvanDll: Game result set to 1-0.\n");
    EXPECT_EQ(trace.lines[1], "OrvanDll: skipping empty game (no players, moves and result).");
    EXPECT_EQ(trace.lines[2], "OrvanDll: 42!");
}

TEST(DebugTrace, LongMessageIsCutInsideItsLine)
{
    TraceCapture trace;
    std::string longText(600, 'a');
    DebugTrace("%s", longText.c_str());
    ASSERT_EQ(trace.lines.size(), 1u);
    EXPECT_EQ(trace.lines[0].size(), static_cast<size_t>(DiagnosticLineSize - 1));
    EXPECT_EQ(trace.lines[0].substr(0, 10), "OrvanDll: ");
}

TEST(DebugTrace, WithoutSinkRecordsAreDropped)
{
    DebugTrace("nobody listens %d", 1);  // must simply return
    SUCCEED();
}

TEST(InternalErrorBox, ShowsHeadTitleAndStyle)
{
    BoxCapture boxes;
    InternalErrorBox(nullptr, "Move tree corrupt.");
    InternalErrorBox(nullptr, "%s", std::string(400, 'z').c_str());
    ASSERT_EQ(boxes.boxes.size(), 2u);
    EXPECT_EQ(boxes.boxes[0].text, "Internal Error!\nMove tree corrupt.");
    EXPECT_EQ(boxes.boxes[0].caption, "OrvanDll");
    EXPECT_EQ(boxes.boxes[0].style, 0x30u);
    EXPECT_EQ(boxes.boxes[1].text.size(), static_cast<size_t>(DiagnosticLineSize - 1));
}

}  // namespace
