#include "ovkey/game_lists.h"

#include <algorithm>

#include "ovkey/open_database.h"
#include "siblings/game_driver.h"

namespace ovkey {
namespace {

bool StoreHighest(KeyDatabase& database)
{
    Statement store(database.connection.get(),
                    "UPDATE lists.meta SET value = ?1 WHERE name = 'highest'");
    return store.Bind(1, database.highestFiled).Run();
}

}  // namespace

void FileGame(KeyDatabase& database, uint32_t file, int32_t key, int32_t number)
{
    if (!database.pendingFilings.empty() && database.pendingFile != file)
        WritePendingFilings(database, true);
    database.pendingFile = file;
    database.pendingFilings.emplace_back(key, number);
    database.highestFiled = std::max(database.highestFiled, number);
    WritePendingFilings(database, false);
}

void WritePendingFilings(KeyDatabase& database, bool evenInBulk)
{
    if (database.pendingFilings.empty() ||
        (!evenInBulk && IGFileStatus(database.pendingFile, OvgFileInBulk) != 0))
        return;
    sqlite3* db = database.connection.get();
    // Inside a run of the caller's the filings join its transaction.
    const bool own = sqlite3_get_autocommit(db) != 0 && Execute(db, "BEGIN IMMEDIATE");
    for (const auto& [key, number] : database.pendingFilings)
        database.fileGame.Reset().Bind(1, key).Bind(2, number).Run();
    StoreHighest(database);
    if (own)
        Execute(db, "COMMIT");
    database.pendingFilings.clear();
}

void DropFilingsFrom(KeyDatabase& database, int32_t number)
{
    if (number > database.highestFiled)
        return;
    std::erase_if(database.pendingFilings, [&](const auto& filing) { return filing.second >= number; });
    Statement drop(database.connection.get(), "DELETE FROM lists.games WHERE game >= ?1");
    drop.Bind(1, number).Run();
    database.highestFiled = number - 1;
    StoreHighest(database);
}

}  // namespace ovkey
