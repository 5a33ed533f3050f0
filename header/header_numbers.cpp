// OvGetHeaderInfoInt: the header fields that have a natural number.
#include "header/result_texts.h"
#include "header/status_flags.h"
#include "orvan.h"
#include "siblings/game_driver.h"

namespace {

constexpr int32_t LastMonth = 12;

// Year in bits 16 to 31, month in 8 to 15, day in 0 to 7, each cut to its
// width, so that the numbers compare like the dates.
int32_t PackedDate(const int32_t* triple)
{
    const uint32_t month = triple[1] > LastMonth ? 0 : static_cast<uint32_t>(triple[1]) & 0xFF;
    return static_cast<int32_t>((static_cast<uint32_t>(triple[0]) & 0xFFFF) << 16 | month << 8 |
                                (static_cast<uint32_t>(triple[2]) & 0xFF));
}

int32_t StatusBits(OvGameBuffer game)
{
    int32_t bits = 0;
    for (const StatusFlag& flag : ShownStatusFlags) {
        if (IGGameGetStatus(game, flag.driverNumber) != 0)
            bits |= flag.bit;
    }
    return bits;
}

}  // namespace

extern "C" ORVAN_API int32_t OvGetHeaderInfoInt(OvGameBuffer game, int32_t field, int32_t* value)
{
    // The date getter doubles as the test of the handle: the number getters
    // cannot tell a game that is not open from a zero.
    const int32_t* date = IGGameGetDate(game, nullptr);
    if (date == nullptr)
        return 0;
    int32_t number = 0;
    switch (field) {
    case HdrWhiteElo: number = IGGameGetElo(game, 0); break;
    case HdrBlackElo: number = IGGameGetElo(game, 1); break;
    case HdrResult: number = PgnResultOfDriverResult(IGGameGetResult(game, 0)); break;
    case HdrDate: number = PackedDate(date); break;
    case HdrSourceLoadnumber: number = IGGameGetSourceLoadnumber(game); break;
    case HdrStatus: number = StatusBits(game); break;
    default: return 0;
    }
    if (value != nullptr)
        *value = number;
    return 1;
}
