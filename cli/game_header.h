// Header fields of a game in a game buffer, as UTF-8 text for people.
#ifndef ORVAN_CLI_GAME_HEADER_H
#define ORVAN_CLI_GAME_HEADER_H

#include <cstdint>
#include <string>

#include "orvan.h"

namespace orvan_cli {

// Header field `field` (a Hdr* code) of the game in `game` in UTF-8; empty
// when the game has no value for it.
std::string HeaderText(OvGameBuffer game, int32_t field);

// The date of the game as "yyyy.mm.dd" with "??" for unknown parts, empty
// when the year is unknown too.
std::string HeaderDate(OvGameBuffer game);

// The year of the game's date, 0 when unknown.
int32_t HeaderYear(OvGameBuffer game);

}  // namespace orvan_cli

#endif
