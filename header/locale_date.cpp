#include "header/locale_date.h"

#include <array>
#include <cstdio>
#include <cstring>

#include "frame/locale_tables.h"

namespace {

bool IsDateLetter(char c)
{
    return c == 'd' || c == 'M' || c == 'y';
}

void EraseRange(char* text, size_t from, size_t to)
{
    std::memmove(text + from, text + to, std::strlen(text + to) + 1);
}

bool IsLeapYear(int year)
{
    return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
}

int DaysInMonth(int year, int month)
{
    constexpr std::array<int, 12> days = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return month == 2 && IsLeapYear(year) ? 29 : days[month - 1];
}

// 0 for Sunday, in the proleptic Gregorian calendar.
int DayOfWeek(int year, int month, int day)
{
    constexpr std::array<int, 12> offsets = {0, 3, 2, 5, 0, 3, 5, 1, 4, 6, 2, 4};
    if (month < 3)
        year -= 1;
    return (year + year / 4 - year / 100 + year / 400 + offsets[month - 1] + day) % 7;
}

// The locale tables carry no day names, so a picture that shows the weekday
// gets the English ones.
constexpr std::array<const char*, 7> LongDayNames = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                                     "Thursday", "Friday", "Saturday"};
constexpr std::array<const char*, 7> ShortDayNames = {"Sun", "Mon", "Tue", "Wed",
                                                      "Thu", "Fri", "Sat"};

// Appends to a bounded text and remembers whether anything did not fit.
class DateWriter {
public:
    DateWriter(char* dest, int32_t size) : dest_(dest), size_(size) {}

    void Put(char c)
    {
        if (used_ + 1 < size_)
            dest_[used_++] = c;
        else
            overflow_ = true;
    }
    void Put(const char* text)
    {
        while (*text != '\0')
            Put(*text++);
    }
    void Number(int value, bool twoDigits)
    {
        char digits[16];
        std::snprintf(digits, sizeof digits, twoDigits ? "%02d" : "%d", value);
        Put(digits);
    }
    bool Finish()
    {
        if (overflow_ || size_ <= 0)
            return false;
        dest_[used_] = '\0';
        return true;
    }

private:
    char* dest_;
    int32_t size_;
    int32_t used_ = 0;
    bool overflow_ = false;
};

}  // namespace

void DropUnknownDateParts(char* picture, uint16_t year, uint16_t month, uint16_t day)
{
    size_t mark = 0;  // just behind the last element kept
    size_t at = 0;
    while (picture[at] != '\0') {
        char c = picture[at];
        if (c == '\'') {
            const char* close = std::strchr(picture + at + 1, '\'');
            at = close != nullptr ? static_cast<size_t>(close - picture) + 1 : std::strlen(picture);
            continue;
        }
        if (!IsDateLetter(c)) {
            ++at;
            continue;
        }
        size_t runEnd = at;
        while (picture[runEnd] == c)
            ++runEnd;
        uint16_t part = c == 'd' ? day : c == 'M' ? month : year;
        if (part != 0) {
            mark = runEnd;
            at = runEnd;
            continue;
        }
        size_t cutEnd = runEnd;
        if (at == mark) {
            // First element, or one joined to the element before: its own
            // separator is the one behind it.
            while (picture[cutEnd] != '\0' && !IsDateLetter(picture[cutEnd]))
                ++cutEnd;
        }
        EraseRange(picture, mark, cutEnd);
        at = mark;
    }
}

int FormatDatePicture(const char* picture, uint16_t year, uint16_t month, uint16_t day,
                      char* dest, int32_t destSize)
{
    if (year == 0 || month < 1 || month > 12 || day < 1 || day > DaysInMonth(year, month))
        return 0;
    char text[LocaleDateSize * 4];
    DateWriter out(text, destSize < static_cast<int32_t>(sizeof text) ? destSize : sizeof text);
    const char* at = picture;
    while (*at != '\0') {
        char c = *at;
        if (c == '\'' && at[1] == '\'') {
            out.Put('\'');
            at += 2;
            continue;
        }
        if (c == '\'') {
            ++at;
            while (*at != '\0') {
                if (*at == '\'' && at[1] == '\'') {
                    out.Put('\'');
                    at += 2;
                } else if (*at == '\'') {
                    ++at;
                    break;
                } else {
                    out.Put(*at++);
                }
            }
            continue;
        }
        if (!IsDateLetter(c)) {
            out.Put(*at++);
            continue;
        }
        int run = 0;
        while (*at == c) {
            ++run;
            ++at;
        }
        if (c == 'd') {
            if (run <= 2)
                out.Number(day, run == 2);
            else
                out.Put((run == 3 ? ShortDayNames : LongDayNames)[DayOfWeek(year, month, day)]);
        } else if (c == 'M') {
            if (run <= 2)
                out.Number(month, run == 2);
            else
                out.Put(run == 3 ? ShortMonthNames[month - 1] : LongMonthNames[month - 1]);
        } else if (run <= 2) {
            out.Number(year % 100, run == 2);
        } else {
            out.Number(year, false);
        }
    }
    if (!out.Finish())
        return 0;
    std::memcpy(dest, text, std::strlen(text) + 1);
    return 1;
}

char* FormatLocaleDate(const DateTriple& date, char* dest, int32_t destSize)
{
    if (destSize > 0)
        dest[0] = '\0';
    if (date.year == 0 && date.month == 0 && date.day == 0)
        return dest;
    auto year = static_cast<uint16_t>(date.year);
    auto month = static_cast<uint16_t>(date.month);
    auto day = static_cast<uint16_t>(date.day);

    char picture[DatePictureSize];
    std::memcpy(picture, DatePicture, sizeof picture);
    picture[DatePictureSize - 1] = '\0';
    DropUnknownDateParts(picture, year, month, day);

    FormatDatePicture(picture, year == 0 ? 1 : year, month == 0 ? 1 : month, day == 0 ? 1 : day,
                      dest, destSize);
    return dest;
}
