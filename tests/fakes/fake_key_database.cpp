// The fake key database: every call answers from `results`; the cache block
// it is lent is kept for the test to look at.
#include "fakes/fake_siblings.h"
#include "siblings/key_database.h"

int32_t OvkGetVersion(uint32_t* version, uint32_t* second)
{
    Fakes().calls.push_back("OvkGetVersion");
    return FakeVersion(version, second, Fakes().keyVersionWord, Fakes().keyVersionResult);
}

int32_t IDOpenBase(const char* databasePath, int32_t openMode, int32_t reserved)
{
    RecordCall("IDOpenBase", {FakeArg(databasePath), FakeArg(openMode), FakeArg(reserved)});
    return FakeResult("IDOpenBase", OVK_OPEN_OK);
}

int32_t IDCloseBase(int32_t flags)
{
    RecordCall("IDCloseBase", {FakeArg(flags)});
    return FakeResult("IDCloseBase", 1);
}

int32_t DbsKeyCacheOn(void* block, int32_t entries)
{
    Fakes().keyCache = block;
    RecordCall("DbsKeyCacheOn", {FakeArg(block), FakeArg(entries)});
    return FakeResult("DbsKeyCacheOn", 1);
}

int32_t DbsKeyCacheOff(void)
{
    Fakes().keyCache = nullptr;
    RecordCall("DbsKeyCacheOff", {});
    return 1;
}

int32_t OvkDeleteDatabaseFiles(const char* gameFilePath, const char* indexPath, int32_t kinds)
{
    RecordCall("OvkDeleteDatabaseFiles", {FakeArg(gameFilePath), FakeArg(indexPath), FakeArg(kinds)});
    return FakeResult("OvkDeleteDatabaseFiles", 1);
}

int32_t OvkOptimizeDatabase(int32_t first, int32_t second, int32_t target, int32_t level,
                            int32_t reserved)
{
    RecordCall("OvkOptimizeDatabase",
               {FakeArg(first), FakeArg(second), FakeArg(target), FakeArg(level), FakeArg(reserved)});
    return FakeResult("OvkOptimizeDatabase", 1);
}

int32_t IDIsDatabaseGamefile(uint32_t file)
{
    RecordCall("IDIsDatabaseGamefile", {FakeArg(file)});
    return FakeResult("IDIsDatabaseGamefile", 0);
}

int32_t DbsFileStatus(int32_t a)
{
    RecordCall("DbsFileStatus", {FakeArg(a)});
    return FakeResult("DbsFileStatus", 0);
}

int32_t DbsAdjustDeletedGames(int32_t count)
{
    RecordCall("DbsAdjustDeletedGames", {FakeArg(count)});
    return FakeResult("DbsAdjustDeletedGames", 1);
}

int32_t OvkSaveToDatabase(uint32_t game, uint32_t file, int32_t reserved1, int32_t reserved2,
                          int32_t mode)
{
    RecordCall("OvkSaveToDatabase", {FakeArg(game), FakeArg(file), FakeArg(reserved1),
                                     FakeArg(reserved2), FakeArg(mode)});
    return FakeResult("OvkSaveToDatabase", 1);
}
