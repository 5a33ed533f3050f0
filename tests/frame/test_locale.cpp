#include <gtest/gtest.h>

#include <string>

#include "frame/locale_tables.h"
#include "platform/user_locale.h"

namespace {

TEST(LocaleTables, FirstPictureWinsAndLongTextsAreCut)
{
    LocaleSource locale;
    const char* names[] = {"January", "February", "March",     "April",   "May",      "June",
                           "July",    "August",   "September", "October", "November", "December"};
    for (int i = 0; i < 12; ++i) {
        locale.longMonthNames[i] = names[i];
        locale.shortMonthNames[i] = std::string(names[i]).substr(0, 3);
    }
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
        {"%d.%m.%Y", "dd.MM.yyyy"}, {"%D", "MM/dd/yy"},   {"%F", "yyyy-MM-dd"},
        {"%e %B %Y", "d MMMM yyyy"}, {"%Ey", "yy"},       {"%Y年%m月%d日", "yyyy年MM月dd日"},
        {"%d de %b", "dd 'd''e' MMM"},
    };
    for (const auto& [format, picture] : cases)
        EXPECT_EQ(PictureFromStrftime(format), picture) << format;
}

TEST(UserLocale, GivesMonthNamesAndAPicture)
{
    LocaleSource locale = UserLocale();
    ASSERT_FALSE(locale.shortDatePictures.empty());
    for (const std::string& name : locale.longMonthNames)
        EXPECT_FALSE(name.empty());
}

}  // namespace
