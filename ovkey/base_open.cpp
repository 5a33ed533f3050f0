// Opening and closing the key database, and the key cache it is lent.
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "ovkey/open_database.h"
#include "siblings/game_driver.h"
#include "siblings/key_database.h"

using namespace ovkey;

namespace {

// Makes an empty game file at `path` through the game store.
bool CreateGameFile(const char* path)
{
    const uint32_t file = OvgOpenGamefile(path, 1);
    return file != 0 && OvgCloseGamefile(file) == 1;
}

}  // namespace

int32_t IDOpenBase(const char* databasePath, int32_t openMode, int32_t reserved)
{
    if (databasePath == nullptr || *databasePath == '\0' || reserved != 0 ||
        (openMode != OV_KEYDB_OPEN_EXISTING && openMode != OV_KEYDB_CREATE))
        return OVK_OPEN_BAD_ARGUMENT;
    const KeyFilePaths paths = KeyFilesOf(databasePath);
    if (paths.baseName.empty())
        return OVK_OPEN_BAD_ARGUMENT;

    KeyDatabaseLock lock(KeyDatabaseMutex());
    if (OpenKeyDatabase() != nullptr)
        return OVK_OPEN_BUSY;
    const bool create = openMode == OV_KEYDB_CREATE;
    if (access(databasePath, F_OK) != 0) {
        if (!create)
            return OVK_OPEN_MISSING;
        if (!CreateGameFile(databasePath))
            return OVK_OPEN_FAILED;
    }
    if (create && mkdir(paths.directory.c_str(), 0777) != 0 && errno != EEXIST)
        return OVK_OPEN_FAILED;
    return OpenKeyFiles(paths, create);
}

int32_t IDCloseBase(int32_t flags)
{
    KeyDatabaseLock lock(KeyDatabaseMutex());
    return CloseKeyDatabase() ? 1 : 0;
}

int32_t DbsKeyCacheOn(void* block, int32_t entries)
{
    if (block == nullptr || entries < 1)
        return 0;
    return WithOpenDatabase(0, [&](KeyDatabase& database) {
        database.cache.Lend(block, entries);
        return 1;
    });
}

int32_t DbsKeyCacheOff(void)
{
    KeyDatabaseLock lock(KeyDatabaseMutex());
    if (KeyDatabase* database = OpenKeyDatabase())
        database->cache.Return();
    return 1;
}
