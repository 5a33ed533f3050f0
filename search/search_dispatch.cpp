// The one entrance of all searches: the query's kind picks the search.
#include "search/query.h"
#include "search/search_drivers.h"

int32_t OvSearchGameHdrs(OvGameFile file, const sQuery* query, SearchCallback callback, intptr_t user)
{
    if (query == nullptr || callback == nullptr)
        return 0;
    switch (query->kind) {
    case QueryKeyGames:
        return OvSearchKeyGames(file, query->key, callback, user);
    case QueryPosition:
        if (!BoardIsEmpty(query->position))
            return OvSearchPosGames(file, &query->position, query->includeDeleted, callback, user);
        break;
    case QueryKeyMoves:
        return OvSearchKeyMoves(file, query->key, &query->position, callback, user);
    default:
        break;
    }
    return SearchHeaders(file, *query, callback, user);
}
