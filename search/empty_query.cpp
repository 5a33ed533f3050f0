// Whether a host's query selects anything at all.
#include <algorithm>

#include "search/query.h"

bool BoardIsEmpty(const sPosition& position)
{
    return std::all_of(std::begin(position.board), std::end(position.board), [](uint8_t square) { return square == 0; });
}

namespace {

bool HeaderQueryIsEmpty(const sQuery& query)
{
    if (query.includeDeleted == 0)
        return false;  // it selects at least the games that are not deleted
    for (const auto& row : query.conditions)
        for (const sQueryCondition& condition : row)
            if (condition.field != 0 && (condition.value[0] != '\0' || condition.op == QopEquals || condition.op == QopNotEquals))
                return false;
    return true;
}

}  // namespace

int32_t OvIsEmptyQuery(const sQuery* query)
{
    if (query == nullptr)
        return 1;
    switch (query->kind) {
    case QueryKeyGames:
    case QueryKeyMoves:
        return 0;
    case QueryPosition:
        return BoardIsEmpty(query->position) && query->includeDeleted != 0 ? 1 : 0;
    case QueryHeader:
        return HeaderQueryIsEmpty(*query) ? 1 : 0;
    default:
        return 1;
    }
}
