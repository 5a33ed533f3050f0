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
    FAKE_ANSWER(IDOpenBase, OVK_OPEN_OK, FakeArg(databasePath), FakeArg(openMode), FakeArg(reserved))

int32_t IDCloseBase(int32_t flags) FAKE_ANSWER(IDCloseBase, 1, FakeArg(flags))

int32_t DbsKeyCacheOn(void* block, int32_t entries)
{
    Fakes().keyCache = block;
    return AnswerCall("DbsKeyCacheOn", 1, {FakeArg(block), FakeArg(entries)});
}

int32_t DbsKeyCacheOff(void)
{
    Fakes().keyCache = nullptr;
    RecordCall("DbsKeyCacheOff", {});
    return 1;
}

int32_t OvkDeleteDatabaseFiles(const char* gameFilePath, const char* indexPath, int32_t kinds)
    FAKE_ANSWER(OvkDeleteDatabaseFiles, 1, FakeArg(gameFilePath), FakeArg(indexPath), FakeArg(kinds))

int32_t OvkOptimizeDatabase(int32_t first, int32_t second, int32_t target, int32_t level,
                            int32_t reserved)
    FAKE_ANSWER(OvkOptimizeDatabase, 1, FakeArg(first), FakeArg(second), FakeArg(target), FakeArg(level),
                FakeArg(reserved))

int32_t IDIsDatabaseGamefile(uint32_t file) FAKE_ANSWER(IDIsDatabaseGamefile, 0, FakeArg(file))
int32_t DbsFileStatus(int32_t a) FAKE_ANSWER(DbsFileStatus, 0, FakeArg(a))
int32_t DbsAdjustDeletedGames(int32_t count) FAKE_ANSWER(DbsAdjustDeletedGames, 1, FakeArg(count))

int32_t OvkSaveToDatabase(uint32_t game, uint32_t file, int32_t reserved1, int32_t reserved2,
                          int32_t mode)
    FAKE_ANSWER(OvkSaveToDatabase, 1, FakeArg(game), FakeArg(file), FakeArg(reserved1), FakeArg(reserved2),
                FakeArg(mode))
