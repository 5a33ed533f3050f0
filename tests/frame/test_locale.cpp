#include <gtest/gtest.h>

#include <string>

#include "frame/locale_tables.h"
#include "platform/user_locale.h"

namespace {

LocaleSource EnglishLocale()
{
    LocaleSource locale;
    const char* longNames[] = {"January", "February", "March",     "April",   "May",      "June",
                               "July",    "August",   "September", "October", "November", "December"};
    for (int i = 0; i < 12; ++i) {
        locale.longMonthNames[i] = longNames[i];
        locale.shortMonthNames[i] = std::string(longNames[i]).substr(0, 3);
    }
    return locale;
}

TEST(LocaleTables, FirstPictureWinsAndNoneKeepsTheDefault)
{
    LocaleSource locale = EnglishLocale();
    LoadLocaleTables(locale);
    EXPECT_STREQ(DatePicture, "yyyy/mm/dd");

    locale.shortDatePictures = {"dd.MM.yyyy", "d.M.yy"};
    LoadLocaleTables(locale);
    EXPECT_STREQ(DatePicture, "dd.MM.yyyy");
    EXPECT_STREQ(LongMonthNames[8], "September");
    EXPECT_STREQ(ShortMonthNames[11], "Dec");
}

TEST(LocaleTables, LongNamesAreCutToTheirSlots)
{
    LocaleSource locale = EnglishLocale();
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
    EXPECT_EQ(PictureFromStrftime("%m/%d/%y"), "MM/dd/yy");
    EXPECT_EQ(PictureFromStrftime("%d.%m.%Y"), "dd.MM.yyyy");
    EXPECT_EQ(PictureFromStrftime("%Y-%m-%d"), "yyyy-MM-dd");
    EXPECT_EQ(PictureFromStrftime("%D"), "MM/dd/yy");
    EXPECT_EQ(PictureFromStrftime("%F"), "yyyy-MM-dd");
    EXPECT_EQ(PictureFromStrftime("%e %B %Y"), "d MMMM yyyy");
    EXPECT_EQ(PictureFromStrftime("%Ey"), "yy");
    EXPECT_EQ(PictureFromStrftime("%Y年%m月%d日"), "yyyy年MM月dd日");
    EXPECT_EQ(PictureFromStrftime("%d de %b"), "dd 'd''e' MMM");
}

TEST(UserLocale, CLocaleGivesEnglishMonthsAndAPicture)
{
    LocaleSource locale = UserLocale();
    ASSERT_FALSE(locale.shortDatePictures.empty());
    for (const std::string& name : locale.longMonthNames)
        EXPECT_FALSE(name.empty());
}

}  // namespace
