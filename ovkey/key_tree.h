// Building a key tree in the open key database (not part of the contract).
#ifndef ORVAN_OVKEY_KEY_TREE_H
#define ORVAN_OVKEY_KEY_TREE_H

#include <cstdint>
#include <span>
#include <string_view>

#include "orvan.h"
#include "siblings/driver_records.h"

// The tree building calls are exported from libovkey.so (as C++) for the
// programs that build key trees; the access library does not use them.
#define OVKEY_TREE_API __attribute__((visibility("default")))

namespace ovkey {

struct NewKey {
    std::string_view code;    // e.g. "B90"; texts in code page 437, cut to 255 characters
    std::string_view name;
    std::string_view remark;
    const BoardRecord* board = nullptr;  // the key's position
    int32_t parent = 0;                  // an existing key, 0 for a root key
    std::span<const PackedMove> line;    // the moves from the start position to `board`
};

// Adds a key to the open database. Result its number, 0 when there is no open
// database, no board, or the parent is unknown.
OVKEY_TREE_API int32_t AddKey(const NewKey& key);

// Groups many AddKey calls into one transaction of the key files, committed
// when the object ends (or rolled back by Abandon()).
class OVKEY_TREE_API KeyTreeBatch {
public:
    KeyTreeBatch();
    ~KeyTreeBatch();
    KeyTreeBatch(const KeyTreeBatch&) = delete;
    KeyTreeBatch& operator=(const KeyTreeBatch&) = delete;

    bool Started() const { return started_; }
    void Abandon();

private:
    bool started_ = false;
    uint64_t generation_ = 0;  // of the database the batch began in
};

}  // namespace ovkey

#endif
