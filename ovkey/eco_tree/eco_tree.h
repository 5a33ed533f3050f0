// The default opening key tree: every line of an ECO classification file
// becomes a key with its code and name, under the key of the longest line it
// extends, all under one key of the start position.
#ifndef ORVAN_OVKEY_ECO_TREE_ECO_TREE_H
#define ORVAN_OVKEY_ECO_TREE_ECO_TREE_H

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "orvan.h"

namespace ovkey {

struct EcoLine {
    std::string code;  // e.g. "B90"
    std::string name;  // opening and variation, e.g. "Sicilian: Najdorf"
    std::vector<PackedMove> moves;
};

// The lines of an ECO file in PGN, whose games carry the tags ECO, Opening and
// Variation and the moves of the line. Games from a set-up position are left
// out.
std::vector<EcoLine> ReadEcoLines(std::string_view pgnText);

struct EcoTreeResult {
    int32_t keys = 0;     // keys added, the start position's included
    int32_t skipped = 0;  // lines with a move the game store refused
};

// Adds the start position and every line as keys to the open key database,
// in one batch. Result with keys 0 when there is no open database or no game
// buffer.
EcoTreeResult BuildEcoTree(std::span<const EcoLine> lines);

}  // namespace ovkey

#endif
