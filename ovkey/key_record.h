// One key as the database keeps it, and reading it by number.
#ifndef ORVAN_OVKEY_KEY_RECORD_H
#define ORVAN_OVKEY_KEY_RECORD_H

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "orvan.h"
#include "ovkey/key_position.h"

namespace ovkey {

struct KeyDatabase;

// Texts are kept to this many characters; the getters' buffers hold 256 bytes.
inline constexpr size_t kKeyTextLength = OV_KEY_TEXT_SIZE - 1;

// The start of a query that names the key ?1 and every key below it as the
// table `subtree` (UNION, so that even a damaged tree with a cycle ends).
inline constexpr std::string_view kSubtreeOfKey =
    "WITH RECURSIVE subtree(id) AS (SELECT ?1 UNION "
    "SELECT keys.id FROM keys JOIN subtree ON keys.parent = subtree.id) ";

struct KeyRecord {
    int32_t key = 0;
    int32_t parent = 0;
    int32_t level = 0;
    std::string code;
    std::string name;
    std::string remark;
    KeyPosition position{};
    std::vector<PackedMove> line;  // from the start position to the key's position
};

// Reads key `key` (through the cache when it has one); false for a key the
// database does not have.
bool ReadKey(KeyDatabase& database, int32_t key, KeyRecord& record);

// Keys directly below `key`, and games filed under `key` itself.
int32_t CountChildren(KeyDatabase& database, int32_t key);
int32_t CountGames(KeyDatabase& database, int32_t key);

// The lowest key of the position of `board`, 0 when no key has it.
int32_t KeyAtPosition(KeyDatabase& database, const BoardRecord& board);

// How many positions from a game's start the keys cover: 1 + the longest key
// line, 0 without keys.
int32_t DatabaseDepth(const KeyDatabase& database);

// Copies `text` into `dest` of `size` bytes (at least 1), cut and terminated.
void CopyCut(char* dest, size_t size, std::string_view text);

// A line of moves as stored: each move two bytes, low byte first.
std::vector<uint8_t> LineBytes(const std::vector<PackedMove>& line);
std::vector<PackedMove> LineFromBytes(std::span<const uint8_t> bytes);

}  // namespace ovkey

#endif
