#include <gtest/gtest.h>

#include <string>

#include "frame/locale_tables.h"
#include "platform/user_locale.h"

namespace {

TEST(LocaleTables, FirstPictureWinsAndLongTextsAreCut)
{
    LocaleSource locale;
    locale.longMonthNames[8] = "September";
    locale.shortMonthNames[11] = "Dec";
    LoadLocaleTables(locale);
    EXPECT_STREQ(DatePicture, "yyyy/mm/dd") << "no picture keeps the default";

    locale.shortDatePictures = {"dd.MM.yyyy", "d.M.yy"};
    LoadLocaleTables(locale);
    EXPECT_STREQ(DatePicture, "dd.MM.yyyy");
    EXPECT_STREQ(LongMonthNames[8], "September");
    EXPECT_STREQ(ShortMonthNames[11], "Dec");

    locale.longMonthNames[0] = std::string(40, 'L');
    locale.shortMonthNames[0] = "Abcdefghij";
    locale.shortDatePictures = {std::string(50, 'y')};
    LoadLocaleTables(locale);
    EXPECT_EQ(std::string(LongMonthNames[0]), std::string(31, 'L'));
    EXPECT_STREQ(ShortMonthNames[0], "Abcdefg");
    EXPECT_EQ(std::string(DatePicture), std::string(31, 'y'));
}

TEST(PictureFromStrftime, TurnsConversionsIntoPictureLetters)
{
    const std::pair<const char*, const char*> cases[] = {
        {"%D", "MM/dd/yy"}, {"%e %B %Y", "d MMMM yyyy"}, {"%Ey", "yy"}, {"%d de %b", "dd 'd''e' MMM"},
    };
    for (const auto& [format, picture] : cases)
        EXPECT_EQ(PictureFromStrftime(format), picture) << format;
}

}  // namespace
