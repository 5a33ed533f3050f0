// Where the key files of a game file live: in the directory OvIndex/ beside
// it, named after the game file: "<name>.okt" the key tree, "<name>.okl" the
// lists of games filed under keys.
#ifndef ORVAN_OVKEY_KEY_FILES_H
#define ORVAN_OVKEY_KEY_FILES_H

#include <string>
#include <string_view>

namespace ovkey {

inline constexpr std::string_view kTreeSuffix = ".okt";
inline constexpr std::string_view kListsSuffix = ".okl";
inline constexpr std::string_view kIndexDirectory = "OvIndex/";

struct KeyFilePaths {
    std::string gameFile;   // as given
    std::string directory;  // the index directory, with its trailing slash
    std::string baseName;   // the game file's name without its directory
    std::string tree;
    std::string lists;
};

// The key files of the game file `gameFile` kept in `indexDirectory`.
KeyFilePaths KeyFilesIn(std::string_view gameFile, std::string_view indexDirectory);

// The key files of the game file `gameFile` in OvIndex/ beside it.
KeyFilePaths KeyFilesOf(std::string_view gameFile);

// Removes `path` and the journal files SQLite may keep beside it; true when
// none of them is left.
bool RemoveDatabaseFile(const std::string& path);

}  // namespace ovkey

#endif
