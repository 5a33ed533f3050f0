#include "frame/locale_tables.h"

#include "frame/copy_bounded.h"

char DatePicture[DatePictureSize] = "yyyy/mm/dd";
char LongMonthNames[12][LongMonthNameSize];
char ShortMonthNames[12][ShortMonthNameSize];

void LoadLocaleTables(const LocaleSource& locale)
{
    if (!locale.shortDatePictures.empty())
        CopyBounded(DatePicture, locale.shortDatePictures.front().c_str(), DatePictureSize);

    // Each name passes through a scratch text of 64 characters, as the
    // enumeration delivers it, before it is cut to its slot.
    char scratch[64];
    for (int month = 0; month < 12; ++month) {
        CopyBounded(scratch, locale.longMonthNames[month].c_str(), sizeof scratch);
        CopyBounded(LongMonthNames[month], scratch, LongMonthNameSize);
        CopyBounded(scratch, locale.shortMonthNames[month].c_str(), sizeof scratch);
        CopyBounded(ShortMonthNames[month], scratch, ShortMonthNameSize);
    }
}
