// The positions of the open database's keys in memory, so that finding a
// board's key asks no file: an open addressing table by hash, one entry per
// distinct position with the lowest key that has it.
#ifndef ORVAN_OVKEY_POSITION_TABLE_H
#define ORVAN_OVKEY_POSITION_TABLE_H

#include <array>
#include <cstdint>
#include <vector>

#include "ovkey/key_position.h"
#include "siblings/driver_records.h"

namespace ovkey {

class PositionTable {
public:
    // Forgets every position.
    void Clear();
    // Records that `key` has `position`; of several keys of one position the
    // lowest stays.
    void Add(const KeyPosition& position, int32_t key);
    // The lowest key of the position of `board`, 0 when no key has it.
    int32_t Find(const BoardRecord& board) const;

    // A position as nine words, read straight from a board: the squares file
    // by file (a1-a8, then b1-b8, ...), then side, castling flags and usable
    // en passant file, as a KeyPosition holds them.
    using Words = std::array<uint64_t, 9>;

private:
    struct Entry {
        Words words;
        int32_t key;
    };
    // A place of the table: 0 when free, else 1 + the index of its entry,
    // with the high bits of the entry's hash to skip most comparisons.
    struct Slot {
        uint32_t entry;
        uint32_t tag;
    };

    // The place in `entries_` + 1 of the position `words` of hash `hash`, 0
    // when the table does not have it.
    uint32_t EntryOf(const Words& words, uint64_t hash) const;
    void Place(uint64_t hash, uint32_t entry);
    void Grow();
    size_t FilterBit(uint64_t hash) const;
    bool MayHave(uint64_t hash) const;

    std::vector<Entry> entries_;
    std::vector<Slot> slots_;  // a power of two in size, at most half full
    // A bit for every entry's hash: most boards that no key has stop here,
    // at a few kilobytes that stay in the processor's cache.
    std::vector<uint64_t> filter_;
};

}  // namespace ovkey

#endif
