// The one open key database of the process: its SQLite connection (the key
// tree file, with the game lists file attached as "lists"), its prepared
// statements, the positions it knows, and the lock that guards it all.
#ifndef ORVAN_OVKEY_OPEN_DATABASE_H
#define ORVAN_OVKEY_OPEN_DATABASE_H

#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "ovkey/key_cache.h"
#include "ovkey/key_files.h"
#include "ovkey/position_table.h"
#include "ovkey/sqlite_handle.h"

namespace ovkey {

struct KeyDatabase {
    Connection connection;
    KeyFilePaths paths;
    PositionTable positions;  // every key's position, so that a lookup asks no file
    int32_t longestLine = -1;  // half-moves of the longest key line, -1 without keys
    KeyCache cache;
    int32_t fileActionDepth = 0;
    // Games filed during a bulk operation on the game file `pendingFile`,
    // waiting for it to end (key, game number).
    uint32_t pendingFile = 0;
    std::vector<std::pair<int32_t, int32_t>> pendingFilings;
    int32_t highestFiled = 0;  // the highest game number filed
    // The game file handles last found to be and not to be the database's own:
    // a handle names one file for as long as it is open.
    uint32_t ownGameFile = 0;
    uint32_t otherGameFile = 0;
    uint64_t generation = 0;   // tells one opening from the next

    Statement keyRow;          // one key by number
    Statement childrenCount;
    Statement gamesCount;
    Statement firstChild;      // sibling order
    Statement lastChild;
    Statement nextSibling;
    Statement previousSibling;
    Statement firstByCode;
    Statement nextByCode;
    Statement previousByCode;
    Statement insertKey;
    Statement fileGame;
};

// Every call into the key database holds this lock; its owner may take it
// again (a visitor of DbsCBSearchKey may call back in).
std::recursive_mutex& KeyDatabaseMutex();
using KeyDatabaseLock = std::lock_guard<std::recursive_mutex>;

// The open database, null when none is open. Only with KeyDatabaseMutex held.
// Games filed during a bulk operation that has ended since are written to the
// game lists first, so that every reader sees them.
KeyDatabase* OpenKeyDatabase();

// Runs `work(database)` with the lock held when a database is open, else
// gives `failure`.
template <typename Result, typename Work>
Result WithOpenDatabase(Result failure, Work&& work)
{
    KeyDatabaseLock lock(KeyDatabaseMutex());
    KeyDatabase* database = OpenKeyDatabase();
    return database == nullptr ? failure : work(*database);
}

// Opens (or, with `create`, makes) the key files of `paths`. Result an
// OVK_OPEN_* code; the database is then the open one.
int32_t OpenKeyFiles(const KeyFilePaths& paths, bool create);

// Closes the open database; false when none was open.
bool CloseKeyDatabase();

// Forgets what the open database knows about its keys besides the files:
// after a change of the key tree.
void ReloadKeyIndex(KeyDatabase& database);

}  // namespace ovkey

#endif
