// The game result in its three orders: the store's code (1 White wins, 2 draw,
// 3 Black wins, anything else none), the PGN order of PgnGame.resultToken
// (0 none, 1 White wins, 2 Black wins, 3 draw), and the display texts.
#ifndef ORVAN_HEADER_RESULT_TEXTS_H
#define ORVAN_HEADER_RESULT_TEXTS_H

#include <cstdint>

// Store result codes.
enum DriverResult : int32_t {
    DriverResultNone = 0, DriverResultWhiteWins = 1, DriverResultDraw = 2,
    DriverResultBlackWins = 3
};

// The PGN result number of a store result: 1 -> 1, 2 -> 3, 3 -> 2, else 0.
int32_t PgnResultOfDriverResult(int32_t driverResult);

// The store result of a PGN result number: 1 -> 1, 2 -> 3, 3 -> 2, else 0
// (no result to store).
int32_t DriverResultOfPgnResult(int32_t pgnResult);

// "1-0", the half-sign draw "\xAB-\xAB" in store code, "0-1", or the empty text.
const char* ResultSymbolText(int32_t driverResult);

// "1-0", "1/2", "0-1", or "*" for no result.
const char* ResultShortText(int32_t driverResult);

#endif
