// Building host queries in tests.
#ifndef ORVAN_TESTS_SEARCH_QUERY_BUILDER_H
#define ORVAN_TESTS_SEARCH_QUERY_BUILDER_H

#include <cstring>

#include "orvan.h"

inline sQuery MakeQuery(uint32_t kind, int32_t includeDeleted = 0)
{
    sQuery query;
    std::memset(&query, 0, sizeof query);
    query.kind = kind;
    query.includeDeleted = includeDeleted;
    return query;
}

inline void SetCondition(sQuery& query, int row, int group, int32_t field, int32_t op, const char* value)
{
    sQueryCondition& slot = query.conditions[row][group];
    slot.field = field;
    slot.op = op;
    std::strncpy(slot.value, value, sizeof slot.value - 1);
    slot.value[sizeof slot.value - 1] = '\0';
}

#endif
