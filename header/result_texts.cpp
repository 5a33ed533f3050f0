#include "header/result_texts.h"

int32_t PgnResultOfDriverResult(int32_t driverResult)
{
    switch (driverResult) {
    case DriverResultWhiteWins: return 1;
    case DriverResultDraw: return 3;
    case DriverResultBlackWins: return 2;
    default: return 0;
    }
}

int32_t DriverResultOfPgnResult(int32_t pgnResult)
{
    // The two orders differ by swapping 2 and 3, so the map is its own inverse.
    return PgnResultOfDriverResult(pgnResult);
}

const char* ResultSymbolText(int32_t driverResult)
{
    switch (driverResult) {
    case DriverResultWhiteWins: return "1-0";
    case DriverResultDraw: return "\xAB-\xAB";
    case DriverResultBlackWins: return "0-1";
    default: return "";
    }
}

const char* ResultShortText(int32_t driverResult)
{
    switch (driverResult) {
    case DriverResultWhiteWins: return "1-0";
    case DriverResultDraw: return "1/2";
    case DriverResultBlackWins: return "0-1";
    default: return "*";
    }
}
