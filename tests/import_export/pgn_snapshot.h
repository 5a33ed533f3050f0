// PGN games as the reader sees them, kept in a form that the round trip
// tests compare: tags, the flat move tree with its markers, glyphs and
// comments by annotation index.
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
    sPosition position{};
    std::vector<PackedMove> moves;  // all entries of the tree, markers included
    std::map<uint32_t, uint16_t> nags;         // by annotation index, set ones only
    std::map<uint32_t, std::string> comments;  // by annotation index

    const std::string& Tag(int32_t number) const { return tags[number - 1]; }
};

// Every game of the PGN file at `path` (at most `limit` of them).
std::vector<GameSnapshot> ReadPgnFile(const std::string& path, size_t limit = SIZE_MAX);

// Every game of a PGN text.
std::vector<GameSnapshot> ReadPgnText(std::string_view text);

// The snapshot of one record, as a reader or a conversion left it.
GameSnapshot Snapshot(const PgnGame& game);

// A movable memory block holding `text` and a NUL; the caller frees it.
HGLOBAL MemoryText(std::string_view text);

// The text of a movable memory block up to its first NUL.
std::string TextOfBlock(HGLOBAL block);

// A path for a scratch file in a directory of its own, which the destructor
// removes with everything the store put beside the file.
class ScratchPath {
public:
    explicit ScratchPath(const std::string& name);
    ~ScratchPath();
    ScratchPath(const ScratchPath&) = delete;
    ScratchPath& operator=(const ScratchPath&) = delete;
    const char* c_str() const { return path_.c_str(); }
    const std::string& str() const { return path_; }

private:
    std::filesystem::path directory_;
    std::string path_;
};

#endif
