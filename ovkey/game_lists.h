// Writing the lists of games filed under keys. A game stored during a bulk
// operation on the game file is filed only once that operation has ended, so
// that the lists never name a game that the game file has not committed; and
// numbers that come back after a bulk operation was lost drop what they named.
#ifndef ORVAN_OVKEY_GAME_LISTS_H
#define ORVAN_OVKEY_GAME_LISTS_H

#include <cstdint>

namespace ovkey {

struct KeyDatabase;

// Files game `number` of the game file `file` under `key`: at once when the
// file is in no bulk operation, else when it has ended.
void FileGame(KeyDatabase& database, uint32_t file, int32_t key, int32_t number);

// Writes the waiting filings when their bulk operation has ended, or at once
// with `evenInBulk` (the database closes).
void WritePendingFilings(KeyDatabase& database, bool evenInBulk);

// The game file has just given out `number` again: what the lists hold from
// that number on belonged to games it has lost, and goes.
void DropFilingsFrom(KeyDatabase& database, int32_t number);

}  // namespace ovkey

#endif
