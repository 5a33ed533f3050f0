// Lines of a key view, and the read bracket around a run of them.
#include <algorithm>
#include <cstring>

#include "ovkey/key_record.h"
#include "ovkey/open_database.h"
#include "siblings/key_database.h"

using namespace ovkey;

namespace {

int32_t RelationTo(const sKeyViewLine* previous, const KeyRecord& record)
{
    if (previous == nullptr || previous->key == 0)
        return OV_KEYVIEW_UNRELATED;
    if (previous->key == record.key)
        return OV_KEYVIEW_SAME;
    if (record.parent == previous->key)
        return OV_KEYVIEW_CHILD;
    if (record.parent == previous->parent)
        return OV_KEYVIEW_SIBLING;
    return OV_KEYVIEW_UNRELATED;
}

int32_t SharedMoves(const sKeyViewLine* previous, const sKeyViewLine& line)
{
    if (previous == nullptr || previous->key == 0)
        return 0;
    const int32_t held = std::clamp(previous->moveCount, 0, OV_KEYVIEW_MOVES);
    const int32_t ours = std::min(line.moveCount, OV_KEYVIEW_MOVES);
    const auto* end = previous->moves + std::min(held, ours);
    return static_cast<int32_t>(std::mismatch(previous->moves, end, line.moves).first - previous->moves);
}

}  // namespace

int32_t OvkFileAction(int32_t action)
{
    if (action != 0 && action != 1)
        return 0;
    return WithOpenDatabase(0, [&](KeyDatabase& database) {
        sqlite3* db = database.connection.get();
        if (action == 1) {
            if (database.fileActionDepth == 0 && !Execute(db, "BEGIN"))
                return 0;
            ++database.fileActionDepth;
            return 1;
        }
        if (database.fileActionDepth == 0)
            return 0;
        if (--database.fileActionDepth == 0)
            Execute(db, "COMMIT");
        return 1;
    });
}

int32_t DbsGetHorViewLine(int32_t key, sKeyViewLine* line, const sKeyViewLine* previous)
{
    if (line == nullptr)
        return 0;
    KeyRecord record;
    sKeyViewLine filled{};
    const bool known = WithOpenDatabase(false, [&](KeyDatabase& database) {
        if (!ReadKey(database, key, record))
            return false;
        filled.childCount = CountChildren(database, key);
        filled.gameCount = CountGames(database, key);
        return true;
    });
    if (known) {
        filled.key = key;
        filled.parent = record.parent;
        filled.level = record.level;
        filled.moveCount = static_cast<int32_t>(record.line.size());
        const size_t kept = std::min(record.line.size(), static_cast<size_t>(OV_KEYVIEW_MOVES));
        std::copy_n(record.line.begin(), kept, filled.moves);
        CopyCut(filled.keycode, sizeof filled.keycode, record.code);
        CopyCut(filled.name, sizeof filled.name, record.name);
        CopyCut(filled.remark, sizeof filled.remark, record.remark);
        filled.sharedMoves = SharedMoves(previous, filled);
        filled.relation = RelationTo(previous, record);
    }
    // `previous` may be `line` itself: it is read before this write.
    std::memcpy(line, &filled, sizeof filled);
    return known ? 1 : 0;
}
