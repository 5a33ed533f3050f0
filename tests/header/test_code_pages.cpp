#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "header/code_pages.h"

namespace {

TEST(CodePages, TablesTranslateBothWaysAndMarkWhatHasNoCounterpart)
{
    const struct { uint8_t ansi, oem, ansiAgain; } cases[] = {
        {0xE9, 0x82, 0xE9}, {0xBD, 0xAB, 0xBD},  // é ½ survive
        {0xC5, 0x8F, 0xC2},  // Å is stored as OEM Å, which the table shows as Â
        {0xC8, 0x45, 0x45},  // È loses its accent
        {0x80, 0xFA, 0xB0},  // no counterpart: marker both ways
        {0xA0, 0x20, 0x20},  // no-break space becomes a blank
    };
    for (const auto& c : cases) {
        EXPECT_EQ(AnsiToOemTable[c.ansi], c.oem) << int(c.ansi);
        EXPECT_EQ(OemToAnsiTable[c.oem], c.ansiAgain) << int(c.ansi);
    }
}

TEST(CodePages, BoundedCopyCutsTerminatesAndChains)
{
    char buffer[8];
    std::memset(buffer, 'x', sizeof buffer);
    char* end = OemToAnsiCopy(buffer, "M\x81ller", 4);
    EXPECT_EQ(std::string(buffer, 5), std::string("M\xFCl\0x", 5));
    EXPECT_EQ(end, buffer + 3);
    end = OemToAnsiCopy(end, "cd", static_cast<int32_t>(buffer + 8 - end));
    EXPECT_STREQ(buffer, "M\xFClcd");
    EXPECT_EQ(end, buffer + 5);

    EXPECT_EQ(AnsiToOemCopy(buffer, "abc", 0), buffer);
    EXPECT_EQ(buffer[0], 'M') << "no room writes nothing";
    EXPECT_EQ(OemToAnsiCopy(buffer, nullptr, 8), buffer);
    EXPECT_STREQ(buffer, "");
}

}  // namespace
