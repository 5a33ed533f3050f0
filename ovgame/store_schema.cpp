// Opening and creating game files: connection settings, schema, and loading
// the file's index into memory.
#include <unistd.h>

#include <string>

#include "ovgame/game_file.h"

namespace ovg {
namespace {

constexpr int64_t ApplicationId = 0x4F564731;  // "OVG1"
constexpr int64_t FormatVersion = 1;

constexpr const char* Schema =
    "PRAGMA application_id = 1331054385;"
    "PRAGMA user_version = 1;"
    "BEGIN;"
    "CREATE TABLE chunks(id INTEGER PRIMARY KEY, first INTEGER NOT NULL, count INTEGER NOT NULL,"
    " data BLOB NOT NULL);"
    "CREATE TABLE recent(number INTEGER PRIMARY KEY, data BLOB NOT NULL);"
    "CREATE TABLE names(id INTEGER PRIMARY KEY, text BLOB NOT NULL);"
    "CREATE TABLE counters(name TEXT PRIMARY KEY, value INTEGER NOT NULL);"
    "INSERT INTO counters VALUES('deleted', 0);"
    "COMMIT;";
static_assert(ApplicationId == 1331054385);

bool QueryNumber(sqlite3* db, const char* sql, int64_t& value)
{
    Statement query;
    if (!query.Prepare(db, sql) || query.Step() != SQLITE_ROW)
        return false;
    value = query.Int(0);
    return true;
}

void RemoveFiles(const std::string& path)
{
    for (const char* suffix : {"", "-wal", "-shm", "-journal"})
        unlink((path + suffix).c_str());
}

bool PrepareStatements(GameFile& file)
{
    sqlite3* db = file.db.get();
    return file.insertChunk.Prepare(db, "INSERT INTO chunks(first, count, data) VALUES(?1, ?2, ?3)") &&
           file.insertRecent.Prepare(db, "INSERT OR REPLACE INTO recent(number, data) VALUES(?1, ?2)") &&
           file.clearRecent.Prepare(db, "DELETE FROM recent") &&
           file.insertName.Prepare(db, "INSERT INTO names(id, text) VALUES(?1, ?2)") &&
           file.setDeleted.Prepare(db, "UPDATE counters SET value = ?1 WHERE name = 'deleted'") &&
           file.begin.Prepare(db, "BEGIN") && file.beginImmediate.Prepare(db, "BEGIN IMMEDIATE") &&
           file.commit.Prepare(db, "COMMIT") && file.rollback.Prepare(db, "ROLLBACK");
}

}  // namespace

FileTable& Files()
{
    static FileTable table;
    return table;
}

bool LoadState(GameFile& file)
{
    sqlite3* db = file.db.get();
    file.chunks.clear();
    file.chunkedGames = 0;
    file.tailBytes.clear();
    file.tailOffsets.assign(1, 0);
    file.cachedRow = 0;
    file.cache.clear();

    int rc = SQLITE_ROW;
    if (file.names != nullptr) {
        // A reload after a rollback keeps the dictionary, since readers may hold
        // its numbers without the lock: the texts the rolled-back transaction
        // added stay, and the next write stores them again.
        Statement stored;
        if (!stored.Prepare(db, "SELECT count(*) FROM names") || stored.Step() != SQLITE_ROW ||
            stored.Int(0) > int64_t(file.names->Last()))
            return false;
        file.namesStored = uint32_t(stored.Int(0));
    } else {
        file.names = std::make_shared<NameDictionary>();
        Statement names;
        if (!names.Prepare(db, "SELECT id, text FROM names ORDER BY id"))
            return false;
        while ((rc = names.Step()) == SQLITE_ROW) {
            if (names.Int(0) != int64_t(file.names->Last()) + 1 || file.names->Add(names.Blob(1)) == 0)
                return false;
        }
        if (rc != SQLITE_DONE)
            return false;
        file.namesStored = file.names->Last();
    }

    Statement chunks;
    if (!chunks.Prepare(db, "SELECT id, first, count FROM chunks ORDER BY first"))
        return false;
    while ((rc = chunks.Step()) == SQLITE_ROW) {
        const ChunkInfo info{chunks.Int(0), chunks.Int(1), uint32_t(chunks.Int(2))};
        if (info.first != file.chunkedGames || chunks.Int(2) <= 0 || chunks.Int(2) > ChunkGames)
            return false;
        file.chunks.push_back(info);
        file.chunkedGames += info.count;
    }
    if (rc != SQLITE_DONE)
        return false;

    Statement recent;
    if (!recent.Prepare(db, "SELECT number, data FROM recent ORDER BY number"))
        return false;
    while ((rc = recent.Step()) == SQLITE_ROW) {
        const std::string_view data = recent.Blob(1);
        if (recent.Int(0) != file.GameCount() || data.size() < 2)
            return false;
        file.tailBytes.insert(file.tailBytes.end(), data.begin(), data.end());
        file.tailOffsets.push_back(uint32_t(file.tailBytes.size()));
    }
    if (rc != SQLITE_DONE)
        return false;
    file.tailStored = file.tailOffsets.size() - 1;
    if (!QueryNumber(db, "SELECT value FROM counters WHERE name = 'deleted'", file.deletedCount))
        return false;
    file.deletedStored = file.deletedCount;
    return true;
}

std::unique_ptr<GameFile> OpenGameFile(const char* path, bool create)
{
    if (path == nullptr || *path == '\0')
        return nullptr;
    if (create)
        RemoveFiles(path);
    sqlite3* raw = nullptr;
    const int flags = SQLITE_OPEN_READWRITE | (create ? SQLITE_OPEN_CREATE : 0) | SQLITE_OPEN_NOMUTEX;
    const int rc = sqlite3_open_v2(path, &raw, flags, nullptr);
    auto file = std::make_unique<GameFile>();
    file->db.Reset(raw);
    if (rc != SQLITE_OK)
        return nullptr;
    sqlite3_busy_timeout(raw, 100);
    // One connection owns the file for as long as it is open; the write-ahead
    // log keeps every committed transaction through a crash of the process.
    // Games written one by one commit a few pages each: a checkpoint every
    // 10,000 log pages instead of SQLite's 1,000 copies the same pages to the
    // file a tenth as often (a log of up to 40 MB while writing).
    int64_t id = 0;
    int64_t version = 0;
    if (!file->db.Exec("PRAGMA locking_mode = EXCLUSIVE") || !QueryNumber(raw, "PRAGMA application_id", id))
        return nullptr;
    if (!create && id != ApplicationId)
        return nullptr;
    if (!file->db.Exec("PRAGMA journal_mode = WAL") || !file->db.Exec("PRAGMA synchronous = NORMAL") ||
        !file->db.Exec("PRAGMA wal_autocheckpoint = 10000"))
        return nullptr;
    if (create && !file->db.Exec(Schema))
        return nullptr;
    if (!QueryNumber(raw, "PRAGMA application_id", id) || !QueryNumber(raw, "PRAGMA user_version", version) ||
        id != ApplicationId || version != FormatVersion)
        return nullptr;
    if (!PrepareStatements(*file) || !LoadState(*file))
        return nullptr;
    return file;
}

}  // namespace ovg
