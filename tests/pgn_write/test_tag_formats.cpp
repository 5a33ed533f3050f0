#include <gtest/gtest.h>

#include <string>

#include "pgn/write/tag_formats.h"

namespace {

TEST(TagFormats, DateSlotToTagText)
{
    const struct { const char *slot, *tag; } cases[] = {
        {"", "????.??.??"},
        {"15 Aug 1998", "0015.08.??"},  // no other order is recognised; day 1998 is out of range
        {"1998 aUg 5", "1998.08.05"},   // month names in any case
        {"1998.??.15", "1998.15.??"},   // the first digits behind the year are the month
        {"10000.01.01", "????.01.01"},
        {"1998.Foo.04", "1998.??.04"},  // an unknown name is month 0
        {"1998 Au", "1998.??.??"},      // a name cut short matches nothing
        {"99999999999999.1.1", "????.01.01"},  // held at the limit, not wrapped
        {"-5.3.2", "????.05.03"},  // a sign belongs to the year only; its digits are read again
    };
    for (const auto& c : cases) {
        int32_t year, month, day;
        ParseDateText(c.slot, year, month, day);
        char text[DateTagSize];
        FormatDateTag(text, year, month, day);
        EXPECT_STREQ(text, c.tag) << '"' << c.slot << '"';
    }
}

TEST(TagFormats, TimeSlotToTagText)
{
    const struct { const char *slot, *tag; } cases[] = {
        {"1:5", "01:05:00"}, {"123:10:05", "??:10:05"},
        {"12h 3m 4s", "12:03:04"}, {"", "00:00:00"},   {"-1:2:3", "??:01:02"},
    };
    for (const auto& c : cases) {
        int32_t hours, minutes, seconds;
        ParseTimeText(c.slot, hours, minutes, seconds);
        char text[TimeTagSize];
        FormatTimeTag(text, hours, minutes, seconds);
        EXPECT_STREQ(text, c.tag) << '"' << c.slot << '"';
    }
}

}  // namespace
