#ifndef ORVAN_HEADER_PLAYER_DESCRIPTION_H
#define ORVAN_HEADER_PLAYER_DESCRIPTION_H

#include <cstdint>

#include "header/text_cursor.h"
#include "orvan.h"

// Appends the player of `side` (0 White, 1 Black) as "Name (country, Elo,
// title)", with only the items that are present (an Elo counts when above 0)
// and no parenthesis when none is. False, with nothing appended, when the
// store gives no text for the game (a handle that is not open).
bool AppendPlayerDescription(AnsiTextCursor& out, OvGameBuffer game, int32_t side);

// Appends the player's name only; false as above.
bool AppendPlayerName(AnsiTextCursor& out, OvGameBuffer game, int32_t side);

#endif
