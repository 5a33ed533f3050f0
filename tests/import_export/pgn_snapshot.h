// PGN games as the reader sees them, in a form the tests compare, and small
// helpers for memory texts and scratch files.
#ifndef ORVAN_TESTS_IMPORT_EXPORT_PGN_SNAPSHOT_H
#define ORVAN_TESTS_IMPORT_EXPORT_PGN_SNAPSHOT_H

#include <array>
#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "orvan.h"

struct GameSnapshot {
    std::array<std::string, PGN_TAG_COUNT> tags;
    int32_t resultToken = 0;
    uint32_t moveCount = 0;
    uint32_t treeCount = 0;
    uint32_t firstMoveNumber = 0;
    std::string position;           // the 70 bytes of the start position
    std::vector<PackedMove> moves;  // all entries of the tree, markers included
    std::map<uint32_t, uint16_t> nags;         // by annotation index, set ones only
    std::map<uint32_t, std::string> comments;  // by annotation index

    const std::string& Tag(int32_t number) const { return tags[number - 1]; }
};

GameSnapshot Snapshot(const PgnGame& game);

// Every game of a PGN file (at most `limit`), or of a text.
std::vector<GameSnapshot> ReadPgnFile(const std::string& path, size_t limit = SIZE_MAX);
std::vector<GameSnapshot> ReadPgnText(std::string_view text);

// A movable memory block holding `text` and a NUL; the caller frees it.
HGLOBAL MemoryText(std::string_view text);
// The text of a movable memory block up to its first NUL.
std::string TextOfBlock(HGLOBAL block);

// A file path in a directory of its own, removed with all its content.
class ScratchPath {
public:
    explicit ScratchPath(const std::string& name);
    ~ScratchPath() { std::filesystem::remove_all(directory_); }
    const char* c_str() const { return path_.c_str(); }
    const std::string& str() const { return path_; }

private:
    std::filesystem::path directory_;
    std::string path_;
};

#endif
