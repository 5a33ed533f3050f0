// Stepping through keys: the whole tree depth first, the keys of one parent,
// or all keys by key code.
#include "ovkey/key_record.h"
#include "ovkey/open_database.h"
#include "siblings/key_database.h"

using namespace ovkey;

namespace {

// A tree is never deeper than this; a damaged file with a cycle stops here.
constexpr int kMaxClimb = 100000;

int32_t FirstRow(Statement& query)
{
    const int32_t key = query.Step() ? static_cast<int32_t>(query.Int(0)) : 0;
    query.Reset();
    return key;
}

int32_t FirstChild(KeyDatabase& database, int32_t parent)
{
    database.firstChild.Reset().Bind(1, parent);
    return FirstRow(database.firstChild);
}

int32_t LastChild(KeyDatabase& database, int32_t parent)
{
    database.lastChild.Reset().Bind(1, parent);
    return FirstRow(database.lastChild);
}

int32_t Sibling(Statement& query, const KeyRecord& record)
{
    query.Reset().Bind(1, record.parent).Bind(2, record.code).Bind(3, record.key);
    return FirstRow(query);
}

int32_t ByCode(Statement& query, const KeyRecord& record)
{
    query.Reset().Bind(1, record.code).Bind(2, record.key);
    return FirstRow(query);
}

// Depth first: the first child, else the next sibling of the key or of the
// nearest key above it that has one.
int32_t TreeNext(KeyDatabase& database, const KeyRecord& from)
{
    KeyRecord record = from;
    if (const int32_t child = FirstChild(database, record.key))
        return child;
    for (int climb = 0; climb < kMaxClimb; ++climb) {
        if (const int32_t sibling = Sibling(database.nextSibling, record))
            return sibling;
        if (record.parent == 0 || !ReadKey(database, record.parent, record))
            return 0;
    }
    return 0;
}

// Depth first backwards: the last key below the previous sibling, else the parent.
int32_t TreePrevious(KeyDatabase& database, const KeyRecord& record)
{
    int32_t key = Sibling(database.previousSibling, record);
    if (key == 0)
        return record.parent;
    for (int descent = 0; descent < kMaxClimb; ++descent) {
        const int32_t last = LastChild(database, key);
        if (last == 0)
            return key;
        key = last;
    }
    return key;
}

// One direction of stepping: the sibling and code order queries and the
// depth first step.
struct Direction {
    Statement KeyDatabase::*sibling;
    Statement KeyDatabase::*byCode;
    int32_t (*treeStep)(KeyDatabase&, const KeyRecord&);
};

int32_t StepFrom(int32_t key, int32_t order, const Direction& direction)
{
    return WithOpenDatabase(0, [&](KeyDatabase& database) {
        KeyRecord record;
        if (!ReadKey(database, key, record))
            return 0;
        switch (order) {
        case OV_KEYORDER_TREE:
            return direction.treeStep(database, record);
        case OV_KEYORDER_SIBLING:
            return Sibling(database.*direction.sibling, record);
        case OV_KEYORDER_CODE:
            return ByCode(database.*direction.byCode, record);
        default:
            return 0;
        }
    });
}

}  // namespace

int32_t OvkGetFirstKey(int32_t parent, int32_t order)
{
    return WithOpenDatabase(0, [&](KeyDatabase& database) {
        switch (order) {
        case OV_KEYORDER_TREE:
        case OV_KEYORDER_SIBLING:
            return FirstChild(database, parent);
        case OV_KEYORDER_CODE:
            return FirstRow(database.firstByCode.Reset());
        default:
            return 0;
        }
    });
}

int32_t OvkGetNextKey(int32_t key, int32_t order)
{
    return StepFrom(key, order, {&KeyDatabase::nextSibling, &KeyDatabase::nextByCode, TreeNext});
}

int32_t OvkGetPreviousKey(int32_t key, int32_t order)
{
    return StepFrom(key, order,
                    {&KeyDatabase::previousSibling, &KeyDatabase::previousByCode, TreePrevious});
}
