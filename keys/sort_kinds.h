// The sort kinds a host may ask for (header field codes) and the game
// driver's sort code of each; 0 there means the field cannot be sorted by.
// The composite player fields sort as the player whose name comes first.
#ifndef ORVAN_KEYS_SORT_KINDS_H
#define ORVAN_KEYS_SORT_KINDS_H

#include <cstdint>

#include "orvan.h"
#include "siblings/game_driver.h"

struct SortKind {
    int32_t headerField;
    int32_t driverCode;
};

// Ends with a pair of zeros.
inline constexpr SortKind SortKinds[] = {
    {HdrPlace, OvgSortPlace},
    {HdrSite, OvgSortSite},
    {HdrRound, OvgSortRound},
    {HdrAnnotator, OvgSortAnnotator},
    {HdrWhite, OvgSortWhite},
    {HdrBlack, OvgSortBlack},
    {HdrWhiteCountry, OvgSortWhiteCountry},
    {HdrBlackCountry, OvgSortBlackCountry},
    {HdrWhiteElo, OvgSortWhiteElo},
    {HdrBlackElo, OvgSortBlackElo},
    {HdrWhiteTitle, OvgSortWhiteTitle},
    {HdrBlackTitle, OvgSortBlackTitle},
    {HdrWhiteTime, 0},
    {HdrBlackTime, 0},
    {HdrKeycode, OvgSortKeycode},
    {HdrResult, OvgSortResult},
    {HdrDate, OvgSortDate},
    {HdrRemark, OvgSortRemark},
    {HdrSourceLoadnumber, OvgSortLoadnumber},
    {HdrMoves, OvgSortMoves},
    {HdrStatus, OvgSortStatus},
    {HdrPlayers, OvgSortWhite},
    {HdrPlayersFull, OvgSortWhite},
    {HdrWhiteFull, OvgSortWhite},
    {HdrBlackFull, OvgSortBlack},
    {0, 0},
};

#endif
