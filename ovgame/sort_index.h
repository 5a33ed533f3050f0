// Sort indexes of a game file: a sort key per game and driver sort code,
// read straight from the packed records without unpacking moves, the order
// of the games by those keys, and index files that keep the keys of a file's
// games in a directory the host names, so that a later sort need not read
// the records again.
#ifndef OVGAME_SORT_INDEX_H
#define OVGAME_SORT_INDEX_H

#include <cstdint>
#include <string>
#include <vector>

#include "ovgame/game_file.h"

namespace ovg {

constexpr int32_t SortCodeCount = 19;  // driver sort codes 1 to 19

// The sort keys of one game, by sort code - 1. A text field's key is the
// number of its text in the file's name dictionary (see TextRanks); every
// other key is an unsigned number in the field's order.
using SortKeys = uint32_t[SortCodeCount];

// Whether the keys of `code` are name dictionary numbers.
bool IsTextSortCode(int32_t code);

// Reads the keys of the packed record of the game with `index` (from 0).
// False for a damaged record.
bool ReadSortKeys(const uint8_t* data, size_t size, int64_t index, SortKeys& keys);

// The rank of every text of `names` in byte order: rank[number], the empty
// text (number 0) first.
std::vector<uint32_t> TextRanks(const NameDictionary& names);

// The index file of sort code `code` for the game file `file` in `directory`.
std::string SortIndexPath(const GameFile& file, const std::string& directory, int32_t code);

// Keys of games 0 to keys.size() - 1 under one code, as kept in an index file,
// with a fingerprint of the last of those games that tells a stale file.
struct SortIndexFile {
    int32_t code = 0;
    uint64_t fingerprint = 0;
    std::vector<uint32_t> keys;
};

// A fingerprint of a packed record that ignores its status byte, which
// changes when the game is deleted or undeleted.
uint64_t RecordFingerprint(std::string_view record);

bool WriteSortIndexFile(const std::string& path, const SortIndexFile& index);
// False when the file is missing, short or not an index of `code`.
bool ReadSortIndexFile(const std::string& path, int32_t code, SortIndexFile& index);

// The directory of the indexes last made for the game file `handle`.
void RememberIndexDirectory(uint32_t handle, const std::string& directory);
bool IndexDirectory(uint32_t handle, std::string& directory);

}  // namespace ovg

#endif
