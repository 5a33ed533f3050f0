#include "game_header.h"

#include <fmt/format.h>

#include "encoding.h"

namespace orvan_cli {

namespace {

int32_t PackedDate(OvGameBuffer game)
{
    int32_t packed = 0;
    OvGetHeaderInfoInt(game, HdrDate, &packed);
    return packed;
}

std::string DatePart(int32_t value, int width)
{
    return value > 0 ? fmt::format("{:0{}}", value, width) : std::string(width, '?');
}

}  // namespace

std::string HeaderText(OvGameBuffer game, int32_t field)
{
    char text[PGN_TAG_SIZE] = {};
    if (OvGetHeaderInfo(game, field, text, sizeof text) == 0)
        return {};
    return Windows1252ToUtf8(text);
}

std::string HeaderDate(OvGameBuffer game)
{
    const int32_t packed = PackedDate(game);
    const int32_t year = packed >> 16;
    if (year <= 0)
        return {};
    return fmt::format("{}.{}.{}", DatePart(year, 4), DatePart((packed >> 8) & 0xFF, 2),
                       DatePart(packed & 0xFF, 2));
}

int32_t HeaderYear(OvGameBuffer game) { return PackedDate(game) >> 16; }

}  // namespace orvan_cli
