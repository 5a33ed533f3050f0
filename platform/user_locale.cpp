#include "platform/user_locale.h"

#include <cctype>
#include <clocale>
#include <langinfo.h>
#include <locale.h>

namespace {

// Owns a locale object of newlocale().
class TimeLocale {
public:
    TimeLocale()
    {
        handle_ = newlocale(LC_TIME_MASK, "", static_cast<locale_t>(nullptr));
        if (handle_ == static_cast<locale_t>(nullptr))
            handle_ = newlocale(LC_TIME_MASK, "C", static_cast<locale_t>(nullptr));
    }
    ~TimeLocale()
    {
        if (handle_ != static_cast<locale_t>(nullptr))
            freelocale(handle_);
    }
    TimeLocale(const TimeLocale&) = delete;
    TimeLocale& operator=(const TimeLocale&) = delete;

    std::string Item(nl_item item) const
    {
        if (handle_ == static_cast<locale_t>(nullptr))
            return {};
        const char* text = nl_langinfo_l(item, handle_);
        return text != nullptr ? text : "";
    }

private:
    locale_t handle_;
};

void AppendLiteral(std::string& picture, char c)
{
    if (std::isalpha(static_cast<unsigned char>(c)) || c == '\'') {
        picture += '\'';
        picture += c;
        picture += '\'';
    } else {
        picture += c;
    }
}

}  // namespace

std::string PictureFromStrftime(std::string_view format)
{
    std::string picture;
    for (size_t i = 0; i < format.size(); ++i) {
        if (format[i] != '%' || i + 1 == format.size()) {
            AppendLiteral(picture, format[i]);
            continue;
        }
        char conversion = format[++i];
        // Skip the E and O modifiers and the glibc padding flags.
        while ((conversion == 'E' || conversion == 'O' || conversion == '-' || conversion == '_' ||
                conversion == '0' || conversion == '^' || conversion == '#') &&
               i + 1 < format.size())
            conversion = format[++i];
        switch (conversion) {
        case 'd': picture += "dd"; break;
        case 'e': picture += "d"; break;
        case 'm': picture += "MM"; break;
        case 'b':
        case 'h': picture += "MMM"; break;
        case 'B': picture += "MMMM"; break;
        case 'y': picture += "yy"; break;
        case 'Y':
        case 'G': picture += "yyyy"; break;
        case 'a': picture += "ddd"; break;
        case 'A': picture += "dddd"; break;
        case 'D': picture += "MM/dd/yy"; break;
        case 'F': picture += "yyyy-MM-dd"; break;
        case '%': picture += '%'; break;
        default: break;  // a conversion with no date part (time, week number) is left out
        }
    }
    return picture;
}

LocaleSource UserLocale()
{
    TimeLocale locale;
    LocaleSource source;
    std::string format = locale.Item(D_FMT);
    if (!format.empty())
        source.shortDatePictures.push_back(PictureFromStrftime(format));
    for (int month = 0; month < 12; ++month) {
        source.longMonthNames[month] = locale.Item(MON_1 + month);
        source.shortMonthNames[month] = locale.Item(ABMON_1 + month);
    }
    return source;
}
