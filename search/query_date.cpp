// A date text of a query, read part by part in any order: numbers of 1000 or
// more are years, smaller ones fill year, month and day in turn, and month
// names of the user's locale set the month.
#include <cstring>
#include <string_view>

#include "frame/locale_tables.h"
#include "search/query.h"

namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
char LowerAscii(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

// True when `text` begins with the whole of `name`, ASCII case ignored. An
// empty name fits nothing.
bool BeginsWithName(const char* text, std::string_view name)
{
    if (name.empty())
        return false;
    for (size_t index = 0; index < name.size(); ++index)
        if (text[index] == '\0' || LowerAscii(text[index]) != LowerAscii(name[index]))
            return false;
    return true;
}

// The month (1 to 12) whose name `text` begins with, long names first; 0 if none.
template <size_t Size>
int32_t MonthNamed(const char* text, const char (&names)[12][Size])
{
    for (int32_t month = 0; month < 12; ++month)
        if (BeginsWithName(text, std::string_view(names[month], strnlen(names[month], Size))))
            return month + 1;
    return 0;
}

}  // namespace

int32_t ParseQueryDate(const char* text, int32_t* year, int32_t* month, int32_t* day)
{
    *year = 0;
    *month = 0;
    *day = 0;
    const char* place = text;
    while (*place != '\0') {
        if (IsDigit(*place)) {
            int64_t number = 0;
            for (; IsDigit(*place); ++place)
                number = number < INT32_MAX ? number * 10 + (*place - '0') : number;
            const auto value = static_cast<int32_t>(number < INT32_MAX ? number : INT32_MAX);
            if (value >= 1000) {
                if (*month == 0)
                    *month = *year;
                else if (*day == 0)
                    *day = *year;
                *year = value;
            } else if (*year == 0) {
                *year = value;
            } else if (*month == 0) {
                *month = value;
            } else {
                *day = value;
            }
        } else if (IsLetter(*place)) {
            int32_t named = MonthNamed(place, LongMonthNames);
            if (named == 0)
                named = MonthNamed(place, ShortMonthNames);
            if (named != 0) {
                if (*day == 0)
                    *day = *month;
                *month = named;
            }
            while (IsLetter(*place))
                ++place;
        } else {
            ++place;
        }
    }
    if (*year >= 1 && *year <= 99)
        *year += 1900;
    return 1;
}
