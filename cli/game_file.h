// Owners of the library's handles for the host's commands: an open game file
// and a game buffer, each closed or freed when it goes out of scope.
#ifndef ORVAN_CLI_GAME_FILE_H
#define ORVAN_CLI_GAME_FILE_H

#include <string>

#include "orvan.h"

namespace orvan_cli {

class GameFile {
public:
    // Opens the existing game file `path`; throws CliError (bad input) naming
    // the file when it is missing, not a file, or no game file.
    static GameFile Open(const std::string& path);
    // Creates the game file `path`; an existing file is replaced only with
    // `replace`, else CliError (usage).
    static GameFile Create(const std::string& path, bool replace);

    GameFile(GameFile&& other) noexcept : handle_(other.handle_), path_(std::move(other.path_))
    {
        other.handle_ = 0;
    }
    GameFile(const GameFile&) = delete;
    GameFile& operator=(const GameFile&) = delete;
    GameFile& operator=(GameFile&&) = delete;
    ~GameFile();

    OvGameFile Handle() const { return handle_; }
    const std::string& Path() const { return path_; }
    int32_t GameCount() const { return OvGetGamesCount(handle_); }

private:
    GameFile(OvGameFile handle, std::string path) : handle_(handle), path_(std::move(path)) {}

    OvGameFile handle_;
    std::string path_;
};

class GameBuffer {
public:
    // Throws CliError (failed) when the library has no game buffer to give.
    GameBuffer();
    GameBuffer(const GameBuffer&) = delete;
    GameBuffer& operator=(const GameBuffer&) = delete;
    ~GameBuffer() { OvFreeGameBuffer(handle_); }

    OvGameBuffer Handle() const { return handle_; }

private:
    OvGameBuffer handle_;
};

// Keeps a bulk operation open on a game file while in scope.
class BulkOperation {
public:
    BulkOperation(const GameFile& file, int32_t mode) : file_(file.Handle())
    {
        OvStartBulkOperation(file_, mode);
    }
    BulkOperation(const BulkOperation&) = delete;
    BulkOperation& operator=(const BulkOperation&) = delete;
    ~BulkOperation() { OvEndBulkOperation(file_); }

private:
    OvGameFile file_;
};

}  // namespace orvan_cli

#endif
