// Opening and closing the key database, with the key cache it gets for the
// time it is open, and the key file maintenance that passes straight through.
#include <memory>
#include <mutex>
#include <utility>

#include "frame/diagnostics.h"
#include "orvan.h"
#include "siblings/key_database.h"

namespace {

constexpr int32_t KeyCacheEntries = 32;
constexpr size_t KeyCacheEntryBytes = 2180;
constexpr size_t KeyCacheBytes = KeyCacheEntries * KeyCacheEntryBytes;
static_assert(KeyCacheBytes == 69760);

struct GlobalFreeDeleter {
    void operator()(void* block) const { GlobalFree(block); }
};
using KeyCacheBlock = std::unique_ptr<void, GlobalFreeDeleter>;

// The one key cache: a block exactly while a database is open, so it also
// tells whether one is. A plain pointer, so that nothing frees it at exit
// behind a host that never closed. Its lock keeps two opens or closes racing
// each other from losing a block or freeing one twice.
std::mutex KeyCacheLock;
void* KeyCacheBuffer = nullptr;

}  // namespace

int32_t OvOpenDatabase(const char* databasePath, int32_t openMode)
{
    std::lock_guard guard(KeyCacheLock);
    if (KeyCacheBuffer != nullptr) {
        DebugTrace("OvOpenDatabase: a database is already open; close it first.");
        return 0;
    }
    // The cache is allocated before the base is opened, so that a failure of
    // either leaves nothing behind.
    KeyCacheBlock cache(GlobalAlloc(GPTR, KeyCacheBytes));
    if (!cache) {
        DebugTrace("OvOpenDatabase: no memory for the key cache.");
        return 0;
    }
    if (IDOpenBase(databasePath, openMode, 0) != 0)
        return 0;
    KeyCacheBuffer = cache.release();
    DbsKeyCacheOn(KeyCacheBuffer, KeyCacheEntries);
    return 1;
}

int32_t OvCloseDatabase(int32_t flags)
{
    std::lock_guard guard(KeyCacheLock);
    if (KeyCacheBuffer == nullptr) {
        DebugTrace("OvCloseDatabase: no database is open.");
        return 1;
    }
    DbsKeyCacheOff();
    GlobalFree(std::exchange(KeyCacheBuffer, nullptr));
    IDCloseBase(flags);
    return 1;
}

int32_t OvDeleteDatabaseFiles(const char* gameFilePath, const char* indexPath, int32_t kinds)
{
    return OvkDeleteDatabaseFiles(gameFilePath, indexPath, kinds);
}

int32_t OvOptimizeDataBase(int32_t level, int32_t reserved)
{
    return OvkOptimizeDatabase(0, 0, 1, level, reserved);
}
