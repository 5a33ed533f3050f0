// The user's date picture and month names, loaded once when the library is
// loaded and read-only afterwards, so every thread may read them unlocked.
#ifndef ORVAN_FRAME_LOCALE_TABLES_H
#define ORVAN_FRAME_LOCALE_TABLES_H

#include "platform/user_locale.h"

inline constexpr int DatePictureSize = 32;
inline constexpr int LongMonthNameSize = 32;
inline constexpr int ShortMonthNameSize = 8;

extern char DatePicture[DatePictureSize];                  // initially "yyyy/mm/dd"
extern char LongMonthNames[12][LongMonthNameSize];         // January first
extern char ShortMonthNames[12][ShortMonthNameSize];       // January first

// Fills the tables from `locale`: its first short date picture (the initial
// text stands when it has none) and its month names, each cut to its slot.
void LoadLocaleTables(const LocaleSource& locale);

#endif
