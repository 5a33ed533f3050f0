// Classification: the key of a game's position, of the deepest known
// position of a game, and of each position of its main line.
#include <algorithm>
#include <cstdint>
#include <cstring>

#include "orvan.h"
#include "siblings/game_driver.h"
#include "siblings/key_database.h"

namespace {

// The key of the game's current position, 0 when the database has none.
int32_t KeyOfCurrentPosition(OvGameBuffer game, bool& found)
{
    int32_t key = 0;
    found = OvkFindPosition(IGGameGetBoard(game), &key) != 0;
    return found ? key : 0;
}

}  // namespace

int32_t OvClassifyPosition(OvGameBuffer game)
{
    bool found = false;
    return KeyOfCurrentPosition(game, found);
}

int32_t OvClassifyGame(OvGameBuffer game, int32_t maxPly, int32_t* reachedPly)
{
    // Positions count as IGGameGetCM does: 1 is the first position.
    const int64_t target = std::min<int64_t>(int64_t{maxPly} + 1, DbsGetDatabaseDepth());
    const int64_t step = target - IGGameGetCM(game);
    PlayMoves(game, int32_t(std::clamp<int64_t>(step, INT32_MIN, INT32_MAX)));
    // Deepest first, then back: a game inside the key tree costs one lookup.
    bool found = false;
    int32_t key = KeyOfCurrentPosition(game, found);
    while (!found && PlayMoves(game, -1) > 0)
        key = KeyOfCurrentPosition(game, found);
    if (reachedPly != nullptr)
        *reachedPly = std::max(IGGameGetCM(game) - 1, 0);
    return key;
}

int32_t OvClassifyMoves(OvGameBuffer game, int32_t* keys, int32_t count)
{
    if (count > 0 && keys == nullptr)
        return 0;
    if (count > 0)
        std::memset(keys, 0, sizeof *keys * size_t(count));
    if (IGGameGetStatus(game, OvgStatusSetUp) != 0)
        return 0;
    NewGameRewind(game);
    const int32_t positions = std::min(count, DbsGetDatabaseDepth());
    int32_t last = 0;
    for (int32_t i = 0; i < positions; ++i) {
        bool found = false;
        const int32_t key = KeyOfCurrentPosition(game, found);
        if (found)
            keys[i] = key;
        if (found || i == 0)
            last = i + 1;
        if (PlayMoves(game, 1) == 0)
            break;
    }
    return last;
}
