// The deduplicated header texts of a game file.
#include "ovgame/name_dictionary.h"

namespace ovg {

uint32_t NameDictionary::Find(std::string_view text) const
{
    if (text.empty())
        return 0;
    const auto it = index_.find(text);
    return it == index_.end() ? UINT32_MAX : it->second;
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
    index_.emplace(std::string_view(stored), id);
    last_.store(id, std::memory_order_release);
    return id;
}

bool NameDictionary::Get(uint32_t id, std::string_view& text) const
{
    if (id == 0) {
        text = {};
        return true;
    }
    if (id > Last())
        return false;
    text = (*blocks_[id >> BlockBits])[id & ((1u << BlockBits) - 1)];
    return true;
}

}  // namespace ovg
