// Creating, opening and closing game files, their counts and status, and the
// bulk phases a caller opens around many reads or writes.
#include "frame/diagnostics.h"
#include "frame/index_path.h"
#include "orvan.h"
#include "siblings/game_driver.h"
#include "siblings/key_database.h"

namespace {

// The only status bits that reach the host.
constexpr int32_t FileStatusBits = OV_FILE_OPEN | OV_FILE_IN_BULK;
static_assert(OV_FILE_OPEN == OvgFileOpen && OV_FILE_IN_BULK == OvgFileInBulk);

// OvgFileAction's actions: the two bulk modes start one, 0 ends it.
constexpr int32_t BulkEnd = 0;
static_assert(OV_BULK_ANY == 1 && OV_BULK_WRITE == 2);

}  // namespace

OvGameFile OvCreateGamefile(const char* path)
{
    if (path == nullptr)
        return 0;
    char indexPath[IndexPathSize];
    if (IndexPathOfGamefile(indexPath, path) == IndexPathTooLong) {
        // The key files of an earlier file of this name could not be named,
        // and a new file must not inherit them.
        DebugTrace("OvCreateGamefile: no room for the index path of %s", path);
        return 0;
    }
    // Key files left by an earlier game file of this name go first; without
    // a directory in the path, the path itself stands for the index path.
    OvkDeleteDatabaseFiles(path, indexPath, OV_KEYFILES_ALL);
    return OvgOpenGamefile(path, 1);
}

OvGameFile OvOpenGamefile(const char* path)
{
    return OvgOpenGamefile(path, 0);
}

int32_t OvCloseGamefile(OvGameFile file)
{
    OvgCloseGamefile(file);
    return 1;
}

int32_t OvGetGamesCount(OvGameFile file)
{
    return OvgGetNumberOfGames(file);
}

int32_t OvFileStatus(OvGameFile file, int32_t reserved)
{
    const int32_t status =
        IDIsDatabaseGamefile(file) != 0 ? DbsFileStatus(reserved) : IGFileStatus(file, reserved);
    return status & FileStatusBits;
}

int32_t OvStartBulkOperation(OvGameFile file, int32_t mode)
{
    OvgFileAction(file, mode == OV_BULK_WRITE ? OV_BULK_WRITE : OV_BULK_ANY);
    return 1;
}

int32_t OvEndBulkOperation(OvGameFile file)
{
    OvgFileAction(file, BulkEnd);
    return 1;
}
