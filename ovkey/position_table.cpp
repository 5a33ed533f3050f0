#include "ovkey/position_table.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace ovkey {
namespace {

using Words = PositionTable::Words;

constexpr size_t kSideCastlingEp = 8;

// A file's eight squares are copied from the board into a word as they lie,
// rank 1 in the low byte, as the stored positions are read below.
static_assert(std::endian::native == std::endian::little);

Words WordsOf(const BoardRecord& board)
{
    Words words;
    for (int file = 0; file < 8; ++file)
        std::memcpy(&words[static_cast<size_t>(file)], board.squares + BoardIndex(file, 0), 8);
    const uint64_t side = board.sideToMove == 1 ? 1 : 0;
    const uint64_t castling = board.castling & 0xF0;
    words[kSideCastlingEp] = side | castling << 8 | uint64_t{UsableEpFile(board)} << 16;
    return words;
}

// The same words from a stored position, byte for byte: a position no board
// can give finds no board.
Words WordsOf(const KeyPosition& position)
{
    Words words{};
    for (size_t file = 0; file < 8; ++file)
        for (size_t rank = 0; rank < 8; ++rank)
            words[file] |= uint64_t{position[8 * rank + file]} << (8 * rank);
    words[kSideCastlingEp] = uint64_t{position[64]} | uint64_t{position[65]} << 8 |
                             uint64_t{position[66]} << 16;
    return words;
}

// Pairs of words multiplied side by side, which the processor overlaps, then
// mixed so that the low bits, which pick the slot, depend on every word.
uint64_t HashOf(const Words& words)
{
    constexpr uint64_t kOdd[] = {0xA0761D6478BD642Full, 0xE7037ED1A0B428DBull,
                                 0x8EBC6AF09C88C6E3ull, 0x589965CC75374CC3ull,
                                 0x1D8E4E27C47D124Full};
    uint64_t hash = words[8] * 0x9E3779B97F4A7C15ull;
    for (size_t i = 0; i < 8; i += 2)
        hash += (words[i] ^ kOdd[i / 2]) * (words[i + 1] ^ kOdd[i / 2 + 1]);
    hash ^= hash >> 32;
    hash *= 0xBF58476D1CE4E5B9ull;
    return hash ^ (hash >> 29);
}

uint32_t TagOf(uint64_t hash)
{
    return static_cast<uint32_t>(hash >> 32);
}

}  // namespace

void PositionTable::Clear()
{
    entries_.clear();
    slots_.clear();
    filter_.clear();
}

void PositionTable::Add(const KeyPosition& position, int32_t key)
{
    const Words words = WordsOf(position);
    const uint64_t hash = HashOf(words);
    if (const uint32_t known = EntryOf(words, hash)) {
        entries_[known - 1].key = std::min(entries_[known - 1].key, key);
        return;
    }
    entries_.push_back({words, key});
    if (2 * entries_.size() > slots_.size())
        Grow();
    else
        Place(hash, static_cast<uint32_t>(entries_.size()));
}

int32_t PositionTable::Find(const BoardRecord& board) const
{
    if (slots_.empty())
        return 0;
    const Words words = WordsOf(board);
    const uint64_t hash = HashOf(words);
    if (!MayHave(hash))
        return 0;
    const uint32_t known = EntryOf(words, hash);
    return known == 0 ? 0 : entries_[known - 1].key;
}

uint32_t PositionTable::EntryOf(const Words& words, uint64_t hash) const
{
    const size_t mask = slots_.size() - 1;
    for (size_t at = hash & mask; !slots_.empty() && slots_[at].entry != 0; at = (at + 1) & mask)
        if (slots_[at].tag == TagOf(hash) && entries_[slots_[at].entry - 1].words == words)
            return slots_[at].entry;
    return 0;
}

void PositionTable::Place(uint64_t hash, uint32_t entry)
{
    const size_t mask = slots_.size() - 1;
    size_t at = hash & mask;
    while (slots_[at].entry != 0)
        at = (at + 1) & mask;
    slots_[at] = {entry, TagOf(hash)};
    const size_t bit = FilterBit(hash);
    filter_[bit / 64] |= uint64_t{1} << (bit % 64);
}

size_t PositionTable::FilterBit(uint64_t hash) const
{
    return static_cast<size_t>(hash >> 20) & (64 * filter_.size() - 1);
}

bool PositionTable::MayHave(uint64_t hash) const
{
    const size_t bit = FilterBit(hash);
    return (filter_[bit / 64] >> (bit % 64) & 1) != 0;
}

void PositionTable::Grow()
{
    slots_.assign(std::bit_ceil(std::max<size_t>(64, 2 * entries_.size())), Slot{0, 0});
    filter_.assign(slots_.size() / 8, 0);  // eight bits a slot
    for (size_t i = 0; i < entries_.size(); ++i)
        Place(HashOf(entries_[i].words), static_cast<uint32_t>(i + 1));
}

}  // namespace ovkey
