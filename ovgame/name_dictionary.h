// The deduplicated header texts of one game file (players, events, sites and
// every other text field), numbered from 1; 0 is the empty text. Texts are
// added under the file's lock; reading a published number takes no lock and
// may run beside additions, since stored texts never move. A number once
// published keeps its text, also after a rolled-back transaction; game
// buffers that hold numbers keep the dictionary alive past the file's close.
#ifndef OVGAME_NAME_DICTIONARY_H
#define OVGAME_NAME_DICTIONARY_H

#include <array>
#include <atomic>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace ovg {

class NameDictionary {
public:
    static constexpr uint32_t BlockBits = 12;
    static constexpr uint32_t BlockCount = 1u << 14;  // room for 67 million texts
    static constexpr uint32_t Capacity = BlockCount << BlockBits;

    // The number of `text`, 0 for the empty text, or UINT32_MAX if unknown.
    uint32_t Find(std::string_view text) const;
    // Adds a text that Find did not know; result its number, 0 when full.
    uint32_t Add(std::string_view text);
    // The text of `id`; false for a number not (yet) published.
    bool Get(uint32_t id, std::string_view& text) const;
    // Highest published number.
    uint32_t Last() const { return last_.load(std::memory_order_acquire); }

private:
    using Block = std::array<std::string, 1u << BlockBits>;
    // A slot of the open-addressed index: a text's hash and number, number 0
    // for a free slot.
    struct Slot {
        uint32_t hash;
        uint32_t id;
    };

    const std::string& Stored(uint32_t id) const { return (*blocks_[id >> BlockBits])[id & ((1u << BlockBits) - 1)]; }
    void Index(Slot slot);

    std::array<std::unique_ptr<Block>, BlockCount> blocks_;
    std::vector<Slot> slots_;  // a power of two in size, at most half taken
    std::atomic<uint32_t> last_{0};
};

using SharedNames = std::shared_ptr<NameDictionary>;

}  // namespace ovg

#endif
