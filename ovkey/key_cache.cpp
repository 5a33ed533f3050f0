#include "ovkey/key_cache.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

#include "ovkey/key_record.h"
#include "siblings/key_database.h"

namespace ovkey {
namespace {

// One entry of the block. Key 0 marks a free entry.
struct CacheEntry {
    int32_t key;
    uint32_t lastUse;
    int32_t parent;
    int32_t level;
    int32_t lineLength;
    char code[OV_KEY_TEXT_SIZE];
    char name[OV_KEY_TEXT_SIZE];
    char remark[OV_KEY_TEXT_SIZE];
    uint8_t position[68];
    PackedMove line[662];
};
static_assert(sizeof(CacheEntry) == OVK_CACHE_ENTRY_SIZE);
static_assert(sizeof(KeyPosition) <= sizeof(CacheEntry::position));
constexpr size_t kLineRoom = sizeof(CacheEntry::line) / sizeof(PackedMove);

}  // namespace

void KeyCache::Lend(void* block, int32_t entries)
{
    block_ = static_cast<unsigned char*>(block);
    entries_ = entries;
    clock_ = 0;
    Clear();
}

void KeyCache::Return()
{
    block_ = nullptr;
    entries_ = 0;
}

void KeyCache::Clear()
{
    const int32_t none = 0;
    for (int32_t i = 0; block_ != nullptr && i < entries_; ++i)
        std::memcpy(block_ + static_cast<size_t>(i) * sizeof(CacheEntry) + offsetof(CacheEntry, key),
                    &none, sizeof none);
}

bool KeyCache::Find(int32_t key, KeyRecord& record)
{
    if (block_ == nullptr || key == 0)
        return false;
    for (int32_t i = 0; i < entries_; ++i) {
        unsigned char* place = block_ + static_cast<size_t>(i) * sizeof(CacheEntry);
        int32_t entryKey = 0;
        std::memcpy(&entryKey, place + offsetof(CacheEntry, key), sizeof entryKey);
        if (entryKey != key)
            continue;
        CacheEntry entry;
        std::memcpy(&entry, place, sizeof entry);
        entry.lastUse = ++clock_;
        std::memcpy(place + offsetof(CacheEntry, lastUse), &entry.lastUse, sizeof entry.lastUse);
        record.key = entry.key;
        record.parent = entry.parent;
        record.level = entry.level;
        record.code = entry.code;
        record.name = entry.name;
        record.remark = entry.remark;
        std::copy_n(entry.position, record.position.size(), record.position.begin());
        record.line.assign(entry.line, entry.line + entry.lineLength);
        return true;
    }
    return false;
}

void KeyCache::Keep(const KeyRecord& record)
{
    if (block_ == nullptr || entries_ < 1 || record.line.size() > kLineRoom)
        return;
    int32_t victim = 0;
    uint32_t oldest = UINT32_MAX;
    for (int32_t i = 0; i < entries_; ++i) {
        CacheEntry head;
        std::memcpy(&head, block_ + static_cast<size_t>(i) * sizeof(CacheEntry),
                    offsetof(CacheEntry, parent));
        const uint32_t use = head.key == 0 ? 0 : head.lastUse;
        if (use < oldest) {
            oldest = use;
            victim = i;
        }
    }
    CacheEntry entry{};
    entry.key = record.key;
    entry.lastUse = ++clock_;
    entry.parent = record.parent;
    entry.level = record.level;
    entry.lineLength = static_cast<int32_t>(record.line.size());
    CopyCut(entry.code, sizeof entry.code, record.code);
    CopyCut(entry.name, sizeof entry.name, record.name);
    CopyCut(entry.remark, sizeof entry.remark, record.remark);
    std::copy(record.position.begin(), record.position.end(), entry.position);
    std::copy(record.line.begin(), record.line.end(), entry.line);
    std::memcpy(block_ + static_cast<size_t>(victim) * sizeof(CacheEntry), &entry, sizeof entry);
}

}  // namespace ovkey
