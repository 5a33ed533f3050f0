// The user's date settings, read from the environment's LC_TIME locale without
// touching the process's global locale.
#ifndef ORVAN_PLATFORM_USER_LOCALE_H
#define ORVAN_PLATFORM_USER_LOCALE_H

#include <array>
#include <string>
#include <string_view>
#include <vector>

struct LocaleSource {
    // Short date pictures in the locale's order ("dd.MM.yyyy" form); may be empty.
    std::vector<std::string> shortDatePictures;
    std::array<std::string, 12> longMonthNames;   // January first
    std::array<std::string, 12> shortMonthNames;  // January first
};

// The settings of the user's locale (LC_ALL, LC_TIME, LANG); the "C" locale's
// when the environment names none that is installed.
LocaleSource UserLocale();

// Turns a strftime date format into a date picture: %d -> dd, %e -> d,
// %m -> MM, %b/%h -> MMM, %B -> MMMM, %y -> yy, %Y -> yyyy, %a -> ddd,
// %A -> dddd, %D -> MM/dd/yy, %F -> yyyy-MM-dd; letters of other text are
// quoted ('...'), so that a picture reader takes them literally.
std::string PictureFromStrftime(std::string_view format);

#endif
