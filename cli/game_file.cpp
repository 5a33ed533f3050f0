#include "game_file.h"

#include <filesystem>

#include "cli_error.h"

namespace orvan_cli {

namespace fs = std::filesystem;

GameFile GameFile::Open(const std::string& path)
{
    std::error_code error;
    const auto status = fs::status(path, error);
    if (!fs::exists(status))
        throw CliError(kExitBadInput, path + ": no such file");
    if (!fs::is_regular_file(status))
        throw CliError(kExitBadInput, path + ": not a file");
    const OvGameFile handle = OvOpenGamefile(path.c_str());
    if (handle == 0 || OvGetGamesCount(handle) < 0) {
        OvCloseGamefile(handle);
        throw CliError(kExitBadInput, path + ": not a game file (or it cannot be opened)");
    }
    return GameFile(handle, path);
}

GameFile GameFile::Create(const std::string& path, bool replace)
{
    std::error_code error;
    if (fs::exists(path, error) && !replace)
        throw CliError(kExitUsage, path + ": already exists (use --force to replace it)");
    const OvGameFile handle = OvCreateGamefile(path.c_str());
    if (handle == 0)
        throw CliError(kExitFailed, path + ": cannot create the game file");
    return GameFile(handle, path);
}

GameFile::~GameFile()
{
    if (handle_ != 0)
        OvCloseGamefile(handle_);
}

GameBuffer::GameBuffer() : handle_(OvAllocGameBuffer())
{
    if (handle_ == 0)
        throw CliError(kExitFailed, "no memory for a game buffer");
}

}  // namespace orvan_cli
