// The text forms of the Date tag and of the two time tags, in both directions.
#ifndef ORVAN_PGN_WRITE_TAG_FORMATS_H
#define ORVAN_PGN_WRITE_TAG_FORMATS_H

#include <cstdint>
#include <string_view>

// Room of a date tag text "????.??.??" and of a time tag text "??:??:??",
// terminator included.
inline constexpr int DateTagSize = 11;
inline constexpr int TimeTagSize = 9;

// The decimal number at the start of `text`, after optional blanks and a
// sign; 0 without digits. Values beyond 32 bits are held at the nearest limit.
int32_t LeadingNumber(std::string_view text);

// Reads year, month and day from left to right: the number at the start of
// the text, then the first digits or the first month name ("Aug", any case)
// behind it, then the first digits behind that. A number may have leading
// blanks and a sign; missing parts are 0. No order but this one is
// recognised and no range is tested. The text ends at its first NUL.
void ParseDateText(std::string_view text, int32_t& year, int32_t& month, int32_t& day);

// Reads hours, minutes and seconds: the number at the start of the text, then
// the first digits behind it, then the next. Missing numbers are 0.
void ParseTimeText(std::string_view text, int32_t& hours, int32_t& minutes, int32_t& seconds);

// Writes "yyyy.mm.dd" into `dest` (DateTagSize characters): a year of 1 to
// 9999, a month and a day of 1 to 99; a part out of range stays "????" or "??".
void FormatDateTag(char* dest, int32_t year, int32_t month, int32_t day);

// Writes "hh:mm:ss" into `dest` (TimeTagSize characters): each value, taken as
// unsigned, is written with two digits when at most 99 and stays "??" when not.
void FormatTimeTag(char* dest, int32_t hours, int32_t minutes, int32_t seconds);

#endif
