// The deduplicated header texts of a game file.
#include "ovgame/name_dictionary.h"

#include <algorithm>
#include <functional>

namespace ovg {
namespace {

uint32_t HashOf(std::string_view text)
{
    return uint32_t(std::hash<std::string_view>{}(text));
}

}  // namespace

uint32_t NameDictionary::Find(std::string_view text) const
{
    if (text.empty())
        return 0;
    if (slots_.empty())
        return UINT32_MAX;
    const uint32_t hash = HashOf(text);
    const size_t mask = slots_.size() - 1;
    for (size_t i = hash & mask;; i = (i + 1) & mask) {
        const Slot slot = slots_[i];
        if (slot.id == 0)
            return UINT32_MAX;
        if (slot.hash == hash && Stored(slot.id) == text)
            return slot.id;
    }
}

uint32_t NameDictionary::Add(std::string_view text)
{
    const uint32_t id = last_.load(std::memory_order_relaxed) + 1;
    if (id >= Capacity)
        return 0;
    auto& block = blocks_[id >> BlockBits];
    if (!block)
        block = std::make_unique<Block>();
    std::string& stored = (*block)[id & ((1u << BlockBits) - 1)];
    stored.assign(text);
    if (2 * size_t(id) >= slots_.size()) {
        std::vector<Slot> old(std::max<size_t>(1024, 2 * slots_.size()), Slot{0, 0});
        old.swap(slots_);
        std::erase_if(old, [](const Slot& slot) { return slot.id == 0; });
        std::sort(old.begin(), old.end(), [](const Slot& a, const Slot& b) { return a.id < b.id; });
        for (const Slot& slot : old)
            Index(slot);
    }
    Index(Slot{HashOf(text), id});
    last_.store(id, std::memory_order_release);
    return id;
}

void NameDictionary::Index(Slot slot)
{
    // Behind any earlier slot of the same text, so that Find keeps giving the
    // first number of a text a damaged file may hold twice.
    const size_t mask = slots_.size() - 1;
    size_t i = slot.hash & mask;
    while (slots_[i].id != 0)
        i = (i + 1) & mask;
    slots_[i] = slot;
}

bool NameDictionary::Get(uint32_t id, std::string_view& text) const
{
    if (id == 0) {
        text = {};
        return true;
    }
    if (id > Last())
        return false;
    text = Stored(id);
    return true;
}

}  // namespace ovg
