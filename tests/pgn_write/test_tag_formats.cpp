#include <gtest/gtest.h>

#include <string>

#include "pgn/write/tag_formats.h"

namespace {

std::string DateTagOf(const char* slot)
{
    int32_t year, month, day;
    ParseDateText(slot, year, month, day);
    char text[DateTagSize];
    FormatDateTag(text, year, month, day);
    return text;
}

std::string TimeTagOf(const char* slot)
{
    int32_t hours, minutes, seconds;
    ParseTimeText(slot, hours, minutes, seconds);
    char text[TimeTagSize];
    FormatTimeTag(text, hours, minutes, seconds);
    return text;
}

TEST(DateTag, SlotTextToTagText)
{
    const struct {
        const char* slot;
        const char* tag;
    } cases[] = {
        {"1998.08.15", "1998.08.15"},
        {"1998.08.??", "1998.08.??"},
        {"1985.??.??", "1985.??.??"},
        {"????.??.??", "????.??.??"},
        {"", "????.??.??"},
        {"15 Aug 1998", "0015.08.??"},  // no other order is recognised; day 1998 is out of range
        {"1998 aUg 5", "1998.08.05"},   // month names in any case
        {"1998.??.15", "1998.15.??"},   // the first digits behind the year are the month
        {"10000.01.01", "????.01.01"},
        {"1998/7/4", "1998.07.04"},
        {"1998.Foo.04", "1998.??.04"},    // an unknown name is month 0
        {"1998 Au", "1998.??.??"},        // a name cut short matches nothing
        {"0.0.0", "????.??.??"},
        {"99999999999999.1.1", "????.01.01"},  // held at the limit, not wrapped
        {"-5.3.2", "????.05.03"},  // a sign belongs to the year only; its digits are read again
    };
    for (const auto& c : cases)
        EXPECT_EQ(DateTagOf(c.slot), c.tag) << '"' << c.slot << '"';
}

TEST(DateTag, PartsAsParsed)
{
    int32_t year, month, day;
    ParseDateText("  2001.12.31", year, month, day);
    EXPECT_EQ(year, 2001);  // blanks in front of the year
    ParseDateText("Dec 2001", year, month, day);
    EXPECT_EQ(year, 0);
    EXPECT_EQ(month, 12);
    EXPECT_EQ(day, 2001);
    std::string unterminated = std::string("1999.02.") + '\0' + "07";
    ParseDateText(unterminated, year, month, day);
    EXPECT_EQ(day, 0) << "reading stops at the first NUL";
}

TEST(TimeTag, SlotTextToTagText)
{
    const struct {
        const char* slot;
        const char* tag;
    } cases[] = {
        {"01:30:00", "01:30:00"}, {"1:5", "01:05:00"},   {"123:10:05", "??:10:05"},
        {"0:0:7", "00:00:07"},    {"12h 3m 4s", "12:03:04"}, {"", "00:00:00"},
        {"-1:2:3", "??:01:02"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(TimeTagOf(c.slot), c.tag) << '"' << c.slot << '"';
}

TEST(LeadingNumber, BlanksSignAndDigits)
{
    EXPECT_EQ(LeadingNumber("2"), 2);
    EXPECT_EQ(LeadingNumber(" +2x"), 2);
    EXPECT_EQ(LeadingNumber("-17"), -17);
    EXPECT_EQ(LeadingNumber("x2"), 0);
    EXPECT_EQ(LeadingNumber(""), 0);
    EXPECT_EQ(LeadingNumber("-99999999999"), INT32_MIN);
}

}  // namespace
