// Sort keys read from a packed record: the header part only (see
// game_record.h for the layout), so that a sort never decodes moves.
#include <algorithm>
#include <numeric>

#include "ovgame/game_record.h"
#include "ovgame/sort_index.h"
#include "siblings/game_driver.h"

namespace ovg {
namespace {

// The text field behind each driver sort code that sorts by a text; the
// others have TextFieldCount.
constexpr TextField TextFieldOfCode[SortCodeCount] = {
    FieldWhite, FieldBlack, TextFieldCount, TextFieldCount, FieldWhiteTitle, FieldBlackTitle,
    FieldWhiteCountry, FieldBlackCountry, FieldSite, FieldPlace, FieldAnnotator, TextFieldCount,
    FieldKeycode, TextFieldCount, FieldRemark, TextFieldCount, TextFieldCount, TextFieldCount,
    TextFieldCount,
};

// A signed number as an unsigned one of the same order.
uint32_t SignedKey(int32_t value) { return uint32_t(value) ^ 0x80000000u; }

// The date as the header's packed date: year, month (0 above 12) and day
// each cut to its width, so that the numbers order dates.
uint32_t DateKey(const int32_t (&date)[3])
{
    const uint32_t month = date[1] > 12 ? 0 : uint32_t(date[1]) & 0xFF;
    return (uint32_t(date[0]) & 0xFFFF) << 16 | month << 8 | (uint32_t(date[2]) & 0xFF);
}

// The status flags as the header's status number: deleted 1, set-up 2,
// annotated 4, variations 8.
uint32_t StatusKey(uint8_t status)
{
    const auto bit = [status](int32_t number, uint32_t value) {
        return (status & (1u << number)) ? value : 0u;
    };
    return bit(OvgStatusDeleted, 1) | bit(OvgStatusSetUp, 2) | bit(OvgStatusAnnotated, 4) |
           bit(OvgStatusVariations, 8);
}

}  // namespace

bool IsTextSortCode(int32_t code)
{
    return code >= 1 && code <= SortCodeCount && TextFieldOfCode[code - 1] != TextFieldCount;
}

bool ReadSortKeys(const uint8_t* data, size_t size, int64_t index, SortKeys& keys)
{
    ByteReader in(data, size);
    PackedHeader header;
    if (!ReadPackedHeader(in, header))
        return false;
    for (int32_t code = 1; code <= SortCodeCount; ++code) {
        if (IsTextSortCode(code))
            keys[code - 1] = header.texts[TextFieldOfCode[code - 1]];
    }
    keys[OvgSortWhiteElo - 1] = SignedKey(header.elo[0]);
    keys[OvgSortBlackElo - 1] = SignedKey(header.elo[1]);
    keys[OvgSortResult - 1] = uint32_t(header.result);
    keys[OvgSortRound - 1] = SignedKey(header.round);
    keys[OvgSortDate - 1] = DateKey(header.date);
    keys[OvgSortLoadnumber - 1] = uint32_t(index + 1);
    keys[OvgSortMoves - 1] = (uint32_t(header.mainLength) + 1) / 2;
    keys[OvgSortStatus - 1] = StatusKey(header.status);
    return true;
}

std::vector<uint32_t> TextRanks(const NameDictionary& names)
{
    const uint32_t last = names.Last();
    std::vector<std::string_view> texts(size_t(last) + 1);
    for (uint32_t id = 1; id <= last; ++id)
        names.Get(id, texts[id]);
    std::vector<uint32_t> order(texts.size());
    std::iota(order.begin(), order.end(), 0u);
    // string_view compares through char_traits<char>, which orders bytes unsigned.
    std::sort(order.begin(), order.end(), [&](uint32_t a, uint32_t b) {
        return texts[a] < texts[b] || (texts[a] == texts[b] && a < b);
    });
    std::vector<uint32_t> rank(texts.size());
    for (uint32_t r = 0; r < order.size(); ++r)
        rank[order[r]] = r;
    return rank;
}

}  // namespace ovg
