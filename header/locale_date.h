// A date triple as the user's short date: only the known parts appear, in the
// order and with the separators of the user's date picture.
#ifndef ORVAN_HEADER_LOCALE_DATE_H
#define ORVAN_HEADER_LOCALE_DATE_H

#include <cstdint>

// A date of the store: year, month, day; 0 marks an unknown part.
struct DateTriple {
    int32_t year;
    int32_t month;
    int32_t day;
};

// Room for a date text, terminator included.
inline constexpr int32_t LocaleDateSize = 64;

// Removes from `picture` (a terminated date picture, edited in place) the
// elements of the parts that are 0, with the separator that belongs to each:
// the one in front of it, or behind it when it stands first. Text inside
// single quotes is never looked at.
void DropUnknownDateParts(char* picture, uint16_t year, uint16_t month, uint16_t day);

// Writes the date as `picture` shows it into `dest` and returns 1, or leaves
// `dest` untouched and returns 0 when the date is no calendar date (month
// 1 to 12, day within the month, year above 0) or the text does not fit in
// `destSize` characters with its terminator. Elements: d, dd day; ddd, dddd
// weekday; M, MM month; MMM, MMMM its short and long name; y, yy year in the
// century; yyy and longer the full year; '...' literal text, '' a quote.
int FormatDatePicture(const char* picture, uint16_t year, uint16_t month, uint16_t day,
                      char* dest, int32_t destSize);

// The date through the user's date picture: empty when all parts are 0 or
// the date is refused; otherwise each part is cut to 16 bits, the unknown
// parts leave the picture and stand as 1. Returns `dest`.
char* FormatLocaleDate(const DateTriple& date, char* dest, int32_t destSize);

#endif
