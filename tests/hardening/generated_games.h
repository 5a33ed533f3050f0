// Small PGN files of numbered games written for the hardening tests, and the
// check of a game file's headers against them.
#ifndef ORVAN_TESTS_HARDENING_GENERATED_GAMES_H
#define ORVAN_TESTS_HARDENING_GENERATED_GAMES_H

#include <cstdint>
#include <filesystem>
#include <string>

#include "orvan.h"

// The PGN text of game `number`: White "White <number>", Black
// "Black <number>", Round <number>, one of a few openings, 8 to 14 moves.
std::string GeneratedGame(int32_t number);

// Writes games first .. first + count - 1 to `path`.
void WriteGeneratedGames(const std::filesystem::path& path, int32_t first, int32_t count);

// Checks that games 1 .. `count` of `file` carry the players of the generated
// games of the same numbers; an empty text when they do, else the first fault.
std::string CompareWithGenerated(OvGameFile file, int32_t count);

// A fresh directory under the system's temporary directory, removed with the
// object.
class ScratchDirectory {
public:
    explicit ScratchDirectory(const std::string& name);
    ~ScratchDirectory();
    ScratchDirectory(const ScratchDirectory&) = delete;
    ScratchDirectory& operator=(const ScratchDirectory&) = delete;
    const std::filesystem::path& Path() const { return path_; }
    std::string File(const std::string& name) const { return (path_ / name).string(); }

private:
    std::filesystem::path path_;
};

#endif
