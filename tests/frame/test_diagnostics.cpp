#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "frame/copy_bounded.h"
#include "frame/diagnostics.h"
#include "support/capture.h"

namespace {

TEST(CopyBounded, StopsAtSizeAndTerminates)
{
    using namespace std::string_literals;
    const struct {
        const char* source;
        int32_t size;
        std::string bytes;  // all 8 bytes of the destination afterwards
    } cases[] = {{"abc", 0, "xxxxxxxx"s},         {"abc", -5, "xxxxxxxx"s},
                 {"abc", 1, "\0xxxxxxx"s},        {"abcdefghij", 5, "abcd\0xxx"s},
                 {"abcdefghij", 8, "abcdefg\0"s}, {"ab", 8, "ab\0xxxxx"s}};
    for (const auto& c : cases) {
        char dest[8];
        std::memset(dest, 'x', sizeof dest);
        CopyBounded(dest, c.source, c.size);
        EXPECT_EQ(std::string(dest, sizeof dest), c.bytes) << c.source << " " << c.size;
    }
}

TEST(Diagnostics, TraceAndBoxTextsAreCutToTheirLine)
{
    TraceCapture trace;
    DebugTrace("%d%c", 42, '!');
    DebugTrace("%s", std::string(600, 'a').c_str());
    EXPECT_EQ(trace.lines,
              (std::vector<std::string>{"OrvanDll: 42!", "OrvanDll: " + std::string(DiagnosticLineSize - 11, 'a')}));

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
