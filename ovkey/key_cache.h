// The key cache: a block of the host's memory, lent by DbsKeyCacheOn, that
// holds the records of recently read keys, entry by entry, so that reading a
// key's texts, data and view line one after the other asks the files once.
// The block may have any alignment; it is only reached by copying.
#ifndef ORVAN_OVKEY_KEY_CACHE_H
#define ORVAN_OVKEY_KEY_CACHE_H

#include <cstdint>

namespace ovkey {

struct KeyRecord;

class KeyCache {
public:
    // Starts using `block` of `entries` entries (zeroed by the host).
    void Lend(void* block, int32_t entries);
    // Stops using the block.
    void Return();
    bool Active() const { return block_ != nullptr; }

    bool Find(int32_t key, KeyRecord& record);
    // Keeps `record` in the least recently used entry; a record that does not
    // fit an entry is not kept.
    void Keep(const KeyRecord& record);
    // Forgets every entry, after a change of the key tree.
    void Clear();

private:
    unsigned char* block_ = nullptr;
    int32_t entries_ = 0;
    uint32_t clock_ = 0;
};

}  // namespace ovkey

#endif
