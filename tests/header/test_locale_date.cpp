#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "frame/locale_tables.h"
#include "header/locale_date.h"

namespace {

struct PictureCase {
    const char* picture;
    uint16_t year, month, day;
    const char* edited;
};

TEST(DropUnknownDateParts, EachMissingPartTakesItsOwnSeparator)
{
    const PictureCase cases[] = {
        {"dd/MM/yyyy", 1998, 8, 0, "MM/yyyy"},
        {"dd/MM/yyyy", 1998, 0, 15, "dd/yyyy"},
        {"yyyy-MM-dd", 0, 0, 15, "dd"},
        {"M/d/yy", 0, 0, 0, ""},
        // A literal between elements goes with the element behind it.
        {"dd 'de' MMMM 'de' yyyy", 1998, 0, 15, "dd 'de' yyyy"},
        // The look-ahead of a first element stops at a letter inside quotes.
        {"d 'de' MMMM 'de' yyyy", 1998, 8, 0, "MMMM 'de' yyyy"},
        // Letters inside quotes are no elements; a literal in front of a missing element is its separator.
        {"'day' d.M", 0, 0, 1, "'day' d"},
    };
    for (const PictureCase& c : cases) {
        char picture[DatePictureSize];
        std::strcpy(picture, c.picture);
        DropUnknownDateParts(picture, c.year, c.month, c.day);
        EXPECT_STREQ(picture, c.edited) << c.picture << " " << c.year << "-" << c.month << "-" << c.day;
    }
}

class FormatDatePictureTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        LocaleSource english;
        english.longMonthNames[7] = "August";
        english.shortMonthNames[7] = "Aug";
        english.shortDatePictures = {"dd/MM/yyyy"};
        LoadLocaleTables(english);
    }

    static std::string Format(const char* picture, uint16_t year, uint16_t month, uint16_t day,
                              int32_t size = LocaleDateSize)
    {
        char text[LocaleDateSize] = "untouched";
        int done = FormatDatePicture(picture, year, month, day, text, size);
        return done != 0 ? std::string(text) : "refused:" + std::string(text);
    }
};

TEST_F(FormatDatePictureTest, ElementsAndLiterals)
{
    EXPECT_EQ(Format("dd/MM/yyyy", 1998, 8, 5), "05/08/1998");
    EXPECT_EQ(Format("MMM d, yyyy", 1998, 8, 5), "Aug 5, 1998");
    EXPECT_EQ(Format("dddd d MMMM", 1998, 8, 5), "Wednesday 5 August");
    EXPECT_EQ(Format("dd''MM'o''clock'", 1998, 8, 5), "05'08o'clock");
    EXPECT_EQ(Format("yyyy/mm/dd", 1, 1, 1), "1/mm/01");
}

TEST_F(FormatDatePictureTest, RefusesWhatIsNoCalendarDateOrDoesNotFit)
{
    EXPECT_EQ(Format("dd/MM/yyyy", 1998, 2, 29), "refused:untouched");
    EXPECT_EQ(Format("dd/MM/yyyy", 1900, 2, 29), "refused:untouched");
    EXPECT_EQ(Format("dd/MM/yyyy", 2000, 2, 29), "29/02/2000");
    EXPECT_EQ(Format("dd/MM/yyyy", 1998, 8, 5, 10), "refused:untouched");
    EXPECT_EQ(Format("dd/MM/yyyy", 1998, 8, 5, 11), "05/08/1998");
}

}  // namespace
