#include "ovkey/open_database.h"

#include <unistd.h>

#include <algorithm>

#include "ovkey/game_lists.h"
#include "siblings/key_database.h"

namespace ovkey {
namespace {

constexpr std::string_view kTreeFormat = "orvan key tree 1";
constexpr std::string_view kListsFormat = "orvan game lists 1";

std::unique_ptr<KeyDatabase>& TheDatabase()
{
    static std::unique_ptr<KeyDatabase> database;
    return database;
}

uint64_t NextGeneration()
{
    static uint64_t generation = 0;
    return ++generation;
}

bool Exists(const std::string& path)
{
    return access(path.c_str(), F_OK) == 0;
}

constexpr const char* kTreeSchema =
    "PRAGMA main.journal_mode = WAL;"
    "PRAGMA main.synchronous = NORMAL;"
    "CREATE TABLE IF NOT EXISTS main.meta(name TEXT PRIMARY KEY, value);"
    "CREATE TABLE IF NOT EXISTS main.keys("
    "  id INTEGER PRIMARY KEY, parent INTEGER NOT NULL, level INTEGER NOT NULL,"
    "  plies INTEGER NOT NULL, code TEXT NOT NULL, name TEXT NOT NULL, remark TEXT NOT NULL,"
    "  position BLOB NOT NULL, line BLOB NOT NULL);"
    "CREATE INDEX IF NOT EXISTS main.keys_by_parent ON keys(parent, code, id);"
    "CREATE INDEX IF NOT EXISTS main.keys_by_code ON keys(code, id);";

constexpr const char* kListsSchema =
    "PRAGMA lists.journal_mode = WAL;"
    "PRAGMA lists.synchronous = NORMAL;"
    "CREATE TABLE IF NOT EXISTS lists.meta(name TEXT PRIMARY KEY, value);"
    "CREATE TABLE IF NOT EXISTS lists.games("
    "  key INTEGER NOT NULL, game INTEGER NOT NULL, PRIMARY KEY(key, game)) WITHOUT ROWID;"
    "INSERT OR IGNORE INTO lists.meta VALUES('deleted', 0), ('highest', 0);";

// Makes the tables of one file of the database. A file without any table is
// new: it is made only when `create` is set, and marked with its format. A
// file with tables must carry the format already.
bool PrepareFile(sqlite3* db, std::string_view schema, std::string_view format,
                 const char* tables, bool create)
{
    const std::string prefix(schema);
    Statement count(db, "SELECT count(*) FROM " + prefix + ".sqlite_master");
    if (!count.Step())
        return false;
    const bool fresh = count.Int(0) == 0;
    count.Reset();  // ends the read, so that the journal mode can change
    if (fresh && !create)
        return false;
    if (!fresh) {
        Statement read(db, "SELECT value FROM " + prefix + ".meta WHERE name = 'format'");
        if (!read.Step() || read.Text(0) != format)
            return false;
    }
    if (!Execute(db, tables))
        return false;
    Statement mark(db, "INSERT OR IGNORE INTO " + prefix + ".meta VALUES('format', ?1)");
    return mark.Bind(1, format).Run();
}

void PrepareStatements(KeyDatabase& d)
{
    sqlite3* db = d.connection.get();
    d.keyRow = Statement(db, "SELECT parent, level, code, name, remark, position, line "
                             "FROM keys WHERE id = ?1");
    d.childrenCount = Statement(db, "SELECT count(*) FROM keys WHERE parent = ?1");
    d.gamesCount = Statement(db, "SELECT count(*) FROM lists.games WHERE key = ?1");
    d.firstChild = Statement(db, "SELECT id FROM keys WHERE parent = ?1 ORDER BY code, id LIMIT 1");
    d.lastChild = Statement(db, "SELECT id FROM keys WHERE parent = ?1 "
                                "ORDER BY code DESC, id DESC LIMIT 1");
    d.nextSibling = Statement(db, "SELECT id FROM keys WHERE parent = ?1 AND (code, id) > (?2, ?3) "
                                  "ORDER BY code, id LIMIT 1");
    d.previousSibling = Statement(db, "SELECT id FROM keys WHERE parent = ?1 AND (code, id) < (?2, ?3) "
                                      "ORDER BY code DESC, id DESC LIMIT 1");
    d.firstByCode = Statement(db, "SELECT id FROM keys ORDER BY code, id LIMIT 1");
    d.nextByCode = Statement(db, "SELECT id FROM keys WHERE (code, id) > (?1, ?2) "
                                 "ORDER BY code, id LIMIT 1");
    d.previousByCode = Statement(db, "SELECT id FROM keys WHERE (code, id) < (?1, ?2) "
                                     "ORDER BY code DESC, id DESC LIMIT 1");
    d.insertKey = Statement(db, "INSERT INTO keys(parent, level, plies, code, name, remark, "
                                "position, line) VALUES(?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8)");
    d.fileGame = Statement(db, "INSERT OR IGNORE INTO lists.games(key, game) VALUES(?1, ?2)");
}

bool AllPrepared(const KeyDatabase& d)
{
    for (const Statement* s : {&d.keyRow, &d.childrenCount, &d.gamesCount,
                               &d.firstChild, &d.lastChild, &d.nextSibling, &d.previousSibling,
                               &d.firstByCode, &d.nextByCode, &d.previousByCode, &d.insertKey,
                               &d.fileGame})
        if (!s->Ok())
            return false;
    return true;
}

}  // namespace

std::recursive_mutex& KeyDatabaseMutex()
{
    static std::recursive_mutex mutex;
    return mutex;
}

KeyDatabase* OpenKeyDatabase()
{
    KeyDatabase* database = TheDatabase().get();
    if (database != nullptr)
        WritePendingFilings(*database, false);
    return database;
}

int32_t OpenKeyFiles(const KeyFilePaths& paths, bool create)
{
    if (TheDatabase())
        return OVK_OPEN_BUSY;
    if (!create && (!Exists(paths.tree) || !Exists(paths.lists)))
        return OVK_OPEN_MISSING;

    auto database = std::make_unique<KeyDatabase>();
    sqlite3* db = nullptr;
    const int flags = SQLITE_OPEN_READWRITE | (create ? SQLITE_OPEN_CREATE : 0);
    const int rc = sqlite3_open_v2(paths.tree.c_str(), &db, flags, nullptr);
    database->connection.reset(db);
    if (rc != SQLITE_OK)
        return OVK_OPEN_FAILED;
    sqlite3_extended_result_codes(db, 1);

    Statement attach(db, "ATTACH DATABASE ?1 AS lists");
    if (!Execute(db, "PRAGMA busy_timeout = 5000") ||
        !PrepareFile(db, "main", kTreeFormat, kTreeSchema, create) ||
        !attach.Bind(1, paths.lists).Run() ||
        !PrepareFile(db, "lists", kListsFormat, kListsSchema, create))
        return OVK_OPEN_FAILED;

    PrepareStatements(*database);
    if (!AllPrepared(*database))
        return OVK_OPEN_FAILED;
    Statement highest(db, "SELECT value FROM lists.meta WHERE name = 'highest'");
    database->highestFiled = highest.Step() ? static_cast<int32_t>(highest.Int(0)) : 0;
    database->paths = paths;
    database->generation = NextGeneration();
    ReloadKeyIndex(*database);
    TheDatabase() = std::move(database);
    return OVK_OPEN_OK;
}

bool CloseKeyDatabase()
{
    if (!TheDatabase())
        return false;
    WritePendingFilings(*TheDatabase(), true);
    if (TheDatabase()->fileActionDepth > 0)
        Execute(TheDatabase()->connection.get(), "COMMIT");
    TheDatabase().reset();
    return true;
}

void ReloadKeyIndex(KeyDatabase& database)
{
    database.positions.Clear();
    Statement keys(database.connection.get(), "SELECT id, position FROM keys");
    while (keys.Step()) {
        KeyPosition position{};
        const auto stored = keys.Blob(1);
        std::copy_n(stored.begin(), std::min(stored.size(), position.size()), position.begin());
        database.positions.Add(position, static_cast<int32_t>(keys.Int(0)));
    }
    Statement longest(database.connection.get(), "SELECT coalesce(max(plies), -1) FROM keys");
    database.longestLine = longest.Step() ? static_cast<int32_t>(longest.Int(0)) : -1;
    database.cache.Clear();
}

}  // namespace ovkey
