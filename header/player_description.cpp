#include "header/player_description.h"

#include <cstdio>

#include "siblings/game_driver.h"

bool AppendPlayerDescription(AnsiTextCursor& out, OvGameBuffer game, int32_t side)
{
    const char* name = IGGameGetPlayer(game, side, nullptr);
    const char* country = IGGameGetCountry(game, side, nullptr);
    const char* title = IGGameGetTitle(game, side, nullptr);
    if (name == nullptr || country == nullptr || title == nullptr)
        return false;
    const int32_t elo = IGGameGetElo(game, side);

    out.Append(name);
    const bool hasCountry = country[0] != '\0';
    const bool hasElo = elo > 0;
    const bool hasTitle = title[0] != '\0';
    if (!hasCountry && !hasElo && !hasTitle)
        return true;
    out.Append(" (");
    out.Append(country);
    if (hasElo) {
        if (hasCountry)
            out.Append(", ");
        char number[16];
        std::snprintf(number, sizeof number, "%d", elo);
        out.Append(number);
    }
    if (hasTitle) {
        if (hasCountry || hasElo)
            out.Append(", ");
        out.Append(title);
    }
    out.Append(")");
    return true;
}

bool AppendPlayerName(AnsiTextCursor& out, OvGameBuffer game, int32_t side)
{
    const char* name = IGGameGetPlayer(game, side, nullptr);
    if (name == nullptr)
        return false;
    out.Append(name);
    return true;
}
