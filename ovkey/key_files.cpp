#include "ovkey/key_files.h"

#include <cerrno>
#include <unistd.h>

namespace ovkey {

KeyFilePaths KeyFilesIn(std::string_view gameFile, std::string_view indexDirectory)
{
    KeyFilePaths paths;
    paths.gameFile = gameFile;
    const size_t slash = gameFile.rfind('/');
    paths.baseName = gameFile.substr(slash == std::string_view::npos ? 0 : slash + 1);
    paths.directory = indexDirectory;
    if (!paths.directory.empty() && paths.directory.back() != '/')
        paths.directory += '/';
    paths.tree = paths.directory + paths.baseName + std::string(kTreeSuffix);
    paths.lists = paths.directory + paths.baseName + std::string(kListsSuffix);
    return paths;
}

KeyFilePaths KeyFilesOf(std::string_view gameFile)
{
    const size_t slash = gameFile.rfind('/');
    const std::string_view directory =
        slash == std::string_view::npos ? std::string_view{} : gameFile.substr(0, slash + 1);
    return KeyFilesIn(gameFile, std::string(directory) + std::string(kIndexDirectory));
}

bool RemoveDatabaseFile(const std::string& path)
{
    bool gone = true;
    for (const char* suffix : {"", "-journal", "-wal", "-shm"}) {
        const std::string name = path + suffix;
        if (unlink(name.c_str()) != 0 && errno != ENOENT)
            gone = false;
    }
    return gone;
}

}  // namespace ovkey
