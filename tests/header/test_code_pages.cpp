#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "header/code_pages.h"

namespace {

std::string Translate(const CodePageTable& table, std::string text)
{
    for (char& c : text)
        c = static_cast<char>(table[static_cast<uint8_t>(c)]);
    return text;
}

TEST(CodePages, AccentedLettersSurviveTheRoundTripWhereBothPagesHaveThem)
{
    // é ü ä Ñ ½ « in ANSI, and their OEM codes.
    const std::string ansi = "\xE9\xFC\xE4\xD1\xBD\xAB";
    const std::string oem = "\x82\x81\x84\xA5\xAB\xAE";
    EXPECT_EQ(Translate(AnsiToOemTable, ansi), oem);
    EXPECT_EQ(Translate(OemToAnsiTable, oem), ansi);
}

TEST(CodePages, LossyTranslationsUseTheTablesReplacements)
{
    struct Case {
        uint8_t ansi, oem, ansiAgain;
    };
    const Case cases[] = {
        {0xC5, 0x8F, 0xC2},  // Å is stored as OEM Å, which the table shows as Â
        {0xC8, 0x45, 0x45},  // È loses its accent
        {0x80, 0xFA, 0xB0},  // no counterpart: marker both ways
        {0xA0, 0x20, 0x20},  // no-break space becomes a blank
        {0xD8, 0x30, 0x30},  // Ø becomes a digit zero
        {0x7F, 0xFA, 0xB0},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(AnsiToOemTable[c.ansi], c.oem) << int(c.ansi);
        EXPECT_EQ(OemToAnsiTable[c.oem], c.ansiAgain) << int(c.ansi);
    }
    // Box drawing and Greek of the OEM page have no ANSI form, except ß.
    EXPECT_EQ(OemToAnsiTable[0xC4], 0xB0);
    EXPECT_EQ(OemToAnsiTable[0xE1], 0xDF);
    EXPECT_EQ(OemToAnsiTable[0xE0], 0xB0);
}

TEST(CodePages, BoundedCopyCutsTerminatesAndChains)
{
    char buffer[8];
    std::memset(buffer, 'x', sizeof buffer);
    char* end = OemToAnsiCopy(buffer, "M\x81ller", 4);
    EXPECT_STREQ(buffer, "M\xFCl");
    EXPECT_EQ(end, buffer + 3);
    EXPECT_EQ(buffer[4], 'x');

    end = OemToAnsiCopy(buffer, "ab", 8);
    end = OemToAnsiCopy(end, "cd", static_cast<int32_t>(buffer + 8 - end));
    EXPECT_STREQ(buffer, "abcd");
    EXPECT_EQ(end, buffer + 4);

    std::memset(buffer, 'x', sizeof buffer);
    EXPECT_EQ(AnsiToOemCopy(buffer, "abc", 1), buffer);
    EXPECT_EQ(buffer[0], '\0');
    EXPECT_EQ(buffer[1], 'x');

    buffer[0] = 'x';
    EXPECT_EQ(AnsiToOemCopy(buffer, "abc", 0), buffer);
    EXPECT_EQ(AnsiToOemCopy(buffer, "abc", -5), buffer);
    EXPECT_EQ(buffer[0], 'x');

    EXPECT_EQ(OemToAnsiCopy(buffer, nullptr, 8), buffer);
    EXPECT_STREQ(buffer, "");

    std::string all(300, 'x');
    OemToAnsiCopyAll(all.data(), std::string(299, '\x84').c_str());
    EXPECT_EQ(all, std::string(299, '\xE4') + '\0');
}

}  // namespace
