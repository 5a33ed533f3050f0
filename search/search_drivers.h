// The searches behind OvSearchGameHdrs, and the pieces they share.
#ifndef ORVAN_SEARCH_SEARCH_DRIVERS_H
#define ORVAN_SEARCH_SEARCH_DRIVERS_H

#include <cstdint>

#include "orvan.h"
#include "siblings/driver_records.h"

// Tests every game's header against `query` (prepared first) and reports the
// hits; `callback` is not null. Returns 0.
int32_t SearchHeaders(OvGameFile file, const sQuery& query, SearchCallback callback, intptr_t user);

// Makes `position` the exact pattern of `game` that UnpackGame mode 2 tests
// for: the standard start unless `position` is another one.
void ArmPositionPattern(OvGameBuffer game, const sPosition& position);

// 1 when the two boards have the same squares, side to move, en passant file
// and castling flags; the rest of the records does not count.
int32_t SameBoard(const BoardRecord* first, const BoardRecord* second);

#endif
