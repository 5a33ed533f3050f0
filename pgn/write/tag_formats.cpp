#include "pgn/write/tag_formats.h"

#include <array>
#include <cstring>
#include <limits>

namespace {

constexpr std::array<std::string_view, 12> MonthAbbreviations = {
    "jan", "feb", "mar", "apr", "may", "jun", "jul", "aug", "sep", "oct", "nov", "dec"};

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool IsLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool IsBlank(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

char Lower(char c)
{
    return (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c;
}

// A reading point that moves forward through a tag text and stops at its end
// or at a NUL.
class TextReader {
public:
    explicit TextReader(std::string_view text) : text_(text.substr(0, text.find('\0'))) {}

    bool AtEnd() const { return at_ >= text_.size(); }
    char Current() const { return AtEnd() ? '\0' : text_[at_]; }

    int32_t Number() const { return LeadingNumber(text_.substr(at_)); }

    void SkipDigits()
    {
        while (IsDigit(Current()))
            ++at_;
    }
    void SkipLetters()
    {
        while (IsLetter(Current()))
            ++at_;
    }
    void SkipToDigit()
    {
        while (!AtEnd() && !IsDigit(Current()))
            ++at_;
    }
    void SkipToDigitOrLetter()
    {
        while (!AtEnd() && !IsDigit(Current()) && !IsLetter(Current()))
            ++at_;
    }

    // 1 to 12 for the month whose abbreviation the next three characters
    // spell, in any case; else 0.
    int32_t MonthName() const
    {
        std::string_view rest = text_.substr(at_);
        if (rest.size() < 3)
            return 0;
        for (size_t month = 0; month < MonthAbbreviations.size(); ++month) {
            std::string_view name = MonthAbbreviations[month];
            if (Lower(rest[0]) == name[0] && Lower(rest[1]) == name[1] && Lower(rest[2]) == name[2])
                return static_cast<int32_t>(month + 1);
        }
        return 0;
    }

private:
    std::string_view text_;
    size_t at_ = 0;
};

// Writes `value` as `digits` decimal digits with leading zeros.
void PutDigits(char* dest, uint32_t value, int digits)
{
    for (int place = digits - 1; place >= 0; --place) {
        dest[place] = static_cast<char>('0' + value % 10);
        value /= 10;
    }
}

}  // namespace

int32_t LeadingNumber(std::string_view text)
{
    size_t at = 0;
    while (at < text.size() && IsBlank(text[at]))
        ++at;
    bool negative = at < text.size() && text[at] == '-';
    if (at < text.size() && (text[at] == '-' || text[at] == '+'))
        ++at;
    int64_t value = 0;
    for (; at < text.size() && IsDigit(text[at]); ++at) {
        value = value * 10 + (text[at] - '0');
        if (value > std::numeric_limits<int32_t>::max())
            return negative ? std::numeric_limits<int32_t>::min()
                            : std::numeric_limits<int32_t>::max();
    }
    return static_cast<int32_t>(negative ? -value : value);
}

void ParseDateText(std::string_view text, int32_t& year, int32_t& month, int32_t& day)
{
    TextReader reader(text);
    year = reader.Number();
    reader.SkipDigits();
    reader.SkipToDigitOrLetter();
    if (IsDigit(reader.Current())) {
        month = reader.Number();
        reader.SkipDigits();
    } else if (IsLetter(reader.Current())) {
        month = reader.MonthName();
        reader.SkipLetters();
    } else {
        month = 0;
    }
    reader.SkipToDigit();
    day = reader.Number();
}

void ParseTimeText(std::string_view text, int32_t& hours, int32_t& minutes, int32_t& seconds)
{
    TextReader reader(text);
    hours = reader.Number();
    reader.SkipDigits();
    reader.SkipToDigit();
    minutes = reader.Number();
    reader.SkipDigits();
    reader.SkipToDigit();
    seconds = reader.Number();
}

void FormatDateTag(char* dest, int32_t year, int32_t month, int32_t day)
{
    std::memcpy(dest, "????.??.??", DateTagSize);
    if (year >= 1 && year <= 9999)
        PutDigits(dest, static_cast<uint32_t>(year), 4);
    if (month >= 1 && month <= 99)
        PutDigits(dest + 5, static_cast<uint32_t>(month), 2);
    if (day >= 1 && day <= 99)
        PutDigits(dest + 8, static_cast<uint32_t>(day), 2);
}

void FormatTimeTag(char* dest, int32_t hours, int32_t minutes, int32_t seconds)
{
    std::memcpy(dest, "??:??:??", TimeTagSize);
    const int32_t values[] = {hours, minutes, seconds};
    for (int part = 0; part < 3; ++part) {
        if (static_cast<uint32_t>(values[part]) <= 99)
            PutDigits(dest + 3 * part, static_cast<uint32_t>(values[part]), 2);
    }
}
