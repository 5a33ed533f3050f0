// The child keys and the games of a key.
#include <algorithm>

#include "orvan.h"
#include "siblings/key_database.h"

int32_t OvGetChildKeys(int32_t key, int32_t* keys, int32_t size)
{
    const int32_t count = DbsSearchKey(key, OVK_SEARCH_CHILDREN, OVK_SCOPE_KEY, keys, size);
    // The database delivers child keys negated; the host gets key numbers.
    const int32_t delivered = keys == nullptr ? 0 : std::min(count, size);
    for (int32_t i = 0; i < delivered; ++i)
        keys[i] = int32_t(0u - uint32_t(keys[i]));
    return count;
}

int32_t OvGetKeyGames(int32_t key, int32_t* games, int32_t size)
{
    return DbsSearchKey(key, OVK_SEARCH_GAMES, OVK_SCOPE_KEY, games, size);
}
