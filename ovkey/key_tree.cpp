#include "ovkey/key_tree.h"

#include <vector>

#include "ovkey/key_record.h"
#include "ovkey/open_database.h"

namespace ovkey {

int32_t AddKey(const NewKey& key)
{
    KeyDatabaseLock lock(KeyDatabaseMutex());
    KeyDatabase* database = OpenKeyDatabase();
    if (database == nullptr || key.board == nullptr)
        return 0;
    int32_t level = 0;
    if (key.parent != 0) {
        KeyRecord parent;
        if (!ReadKey(*database, key.parent, parent))
            return 0;
        level = parent.level + 1;
    }
    const KeyPosition position = KeyPositionOf(*key.board);
    const std::vector<PackedMove> line(key.line.begin(), key.line.end());
    Statement& insert = database->insertKey;
    insert.Reset()
        .Bind(1, key.parent)
        .Bind(2, level)
        .Bind(3, static_cast<int64_t>(line.size()))
        .Bind(4, key.code.substr(0, kKeyTextLength))
        .Bind(5, key.name.substr(0, kKeyTextLength))
        .Bind(6, key.remark.substr(0, kKeyTextLength))
        .BindBlob(7, position)
        .BindBlob(8, LineBytes(line));
    if (!insert.Run())
        return 0;
    const auto number = static_cast<int32_t>(sqlite3_last_insert_rowid(database->connection.get()));
    database->positions.Add(position, number);
    database->longestLine = std::max(database->longestLine, static_cast<int32_t>(line.size()));
    return number;
}

KeyTreeBatch::KeyTreeBatch()
{
    KeyDatabaseLock lock(KeyDatabaseMutex());
    KeyDatabase* database = OpenKeyDatabase();
    started_ = database != nullptr && Execute(database->connection.get(), "BEGIN IMMEDIATE");
    if (started_)
        generation_ = database->generation;
}

KeyTreeBatch::~KeyTreeBatch()
{
    KeyDatabaseLock lock(KeyDatabaseMutex());
    KeyDatabase* database = OpenKeyDatabase();
    if (started_ && database != nullptr && database->generation == generation_)
        Execute(database->connection.get(), "COMMIT");
}

void KeyTreeBatch::Abandon()
{
    KeyDatabaseLock lock(KeyDatabaseMutex());
    KeyDatabase* database = OpenKeyDatabase();
    if (started_ && database != nullptr && database->generation == generation_) {
        Execute(database->connection.get(), "ROLLBACK");
        ReloadKeyIndex(*database);
    }
    started_ = false;
}

}  // namespace ovkey
