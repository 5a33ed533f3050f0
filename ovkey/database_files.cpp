// The files of the key database: which game file is its own, its status,
// the count of deleted games, optimising, and removing key files.
#include <dirent.h>
#include <sys/stat.h>

#include <array>
#include <memory>
#include <string>
#include <string_view>

#include "ovkey/open_database.h"
#include "siblings/game_driver.h"
#include "siblings/key_database.h"

using namespace ovkey;

namespace {

bool SameFile(const std::string& first, const std::string& second)
{
    struct stat a {};
    struct stat b {};
    return stat(first.c_str(), &a) == 0 && stat(second.c_str(), &b) == 0 &&
           a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

int64_t DeletedGames(KeyDatabase& database)
{
    Statement read(database.connection.get(),
                   "SELECT value FROM lists.meta WHERE name = 'deleted'");
    return read.Step() ? read.Int(0) : 0;
}

// The name of a file of the index directory, if it is an index file of the
// game file other than its key tree or game lists: "<game file>.<ext>".
bool IsOtherIndexFile(std::string_view name, std::string_view baseName)
{
    if (name.size() <= baseName.size() + 1 || name.substr(0, baseName.size()) != baseName ||
        name[baseName.size()] != '.')
        return false;
    const std::string_view ext = name.substr(baseName.size() + 1);
    if (ext.find('.') != std::string_view::npos)
        return false;
    for (std::string_view own : {kTreeSuffix.substr(1), kListsSuffix.substr(1)})
        if (ext == own || (ext.size() > own.size() && ext.substr(0, own.size()) == own &&
                           ext[own.size()] == '-'))
            return false;
    return true;
}

bool RemoveOtherIndexFiles(const KeyFilePaths& paths)
{
    struct DirCloser {
        void operator()(DIR* dir) const { closedir(dir); }
    };
    std::unique_ptr<DIR, DirCloser> dir(opendir(paths.directory.c_str()));
    if (!dir)
        return true;  // no directory, no files
    bool gone = true;
    while (const dirent* entry = readdir(dir.get()))
        if (IsOtherIndexFile(entry->d_name, paths.baseName))
            gone = RemoveDatabaseFile(paths.directory + entry->d_name) && gone;
    return gone;
}

}  // namespace

int32_t IDIsDatabaseGamefile(uint32_t file)
{
    if (file == 0)
        return 0;
    return WithOpenDatabase(0, [&](KeyDatabase& database) {
        const bool open = IGFileStatus(file, OvgFileOpen) != 0;
        if (!open)
            return 0;
        if (file == database.ownGameFile || file == database.otherGameFile)
            return file == database.ownGameFile ? 1 : 0;
        std::array<char, 4096> path{};
        const int32_t length = OvgGetGamefilePath(file, path.data(), static_cast<int32_t>(path.size()));
        const bool own = length > 0 && length < static_cast<int32_t>(path.size()) &&
                         SameFile(path.data(), database.paths.gameFile);
        (own ? database.ownGameFile : database.otherGameFile) = file;
        return own ? 1 : 0;
    });
}

int32_t DbsFileStatus(int32_t a)
{
    const int32_t status = WithOpenDatabase(0, [](KeyDatabase& database) {
        int32_t bits = OvgFileOpen;
        if (database.fileActionDepth > 0 || !sqlite3_get_autocommit(database.connection.get()))
            bits |= OvgFileInBulk;
        if (DeletedGames(database) > 0)
            bits |= OvgFileHasDeleted;
        return bits;
    });
    return a == 0 ? status : status & a;
}

int32_t DbsAdjustDeletedGames(int32_t count)
{
    return WithOpenDatabase(0, [&](KeyDatabase& database) {
        Statement adjust(database.connection.get(),
                         "UPDATE lists.meta SET value = max(0, value + ?1) WHERE name = 'deleted'");
        return adjust.Bind(1, count).Run() ? 1 : 0;
    });
}

int32_t OvkOptimizeDatabase(int32_t first, int32_t second, int32_t target, int32_t level,
                            int32_t reserved)
{
    if (first != 0 || second != 0 || target != 1 || reserved != 0 ||
        (level != OV_KEYDB_OPTIMIZE_QUICK && level != OV_KEYDB_OPTIMIZE_FULL))
        return 0;
    return WithOpenDatabase(0, [&](KeyDatabase& database) {
        sqlite3* db = database.connection.get();
        if (level == OV_KEYDB_OPTIMIZE_QUICK)
            return Execute(db, "ANALYZE main; ANALYZE lists;") ? 1 : 0;
        // Compacting needs the files to themselves: not inside a run.
        if (database.fileActionDepth > 0 || !sqlite3_get_autocommit(db))
            return 0;
        return Execute(db, "DELETE FROM lists.games WHERE key NOT IN (SELECT id FROM keys);"
                           "VACUUM main; VACUUM lists; ANALYZE main; ANALYZE lists;")
                   ? 1
                   : 0;
    });
}

int32_t OvkDeleteDatabaseFiles(const char* gameFilePath, const char* indexPath, int32_t kinds)
{
    if (gameFilePath == nullptr || indexPath == nullptr || *gameFilePath == '\0' ||
        *indexPath == '\0' || kinds <= 0 || (kinds & ~OV_KEYFILES_ALL) != 0)
        return 0;
    const KeyFilePaths paths = KeyFilesIn(gameFilePath, indexPath);
    if (paths.baseName.empty())
        return 0;
    KeyDatabaseLock lock(KeyDatabaseMutex());
    if (const KeyDatabase* open = OpenKeyDatabase();
        open != nullptr && (SameFile(paths.tree, open->paths.tree) ||
                            SameFile(paths.lists, open->paths.lists)))
        return 0;
    bool gone = true;
    if (kinds & OV_KEYFILES_TREE)
        gone = RemoveDatabaseFile(paths.tree) && gone;
    if (kinds & OV_KEYFILES_LISTS)
        gone = RemoveDatabaseFile(paths.lists) && gone;
    if (kinds & OV_KEYFILES_INDEX)
        gone = RemoveOtherIndexFiles(paths) && gone;
    return gone ? 1 : 0;
}
