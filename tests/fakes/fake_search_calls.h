// What the fake batch reads, pattern tests and key iterations of the search
// tests deliver. A fake packed game is the game's number as a 32-bit value.
#ifndef ORVAN_TESTS_FAKE_SEARCH_CALLS_H
#define ORVAN_TESTS_FAKE_SEARCH_CALLS_H

#include <cstdint>
#include <set>
#include <vector>

struct FakeSearchStore {
    int32_t games = 0;          // games OvgReadGames can deliver
    int32_t batchLimit = 100;   // at most this many per read, as if the buffer were full
    std::set<int32_t> hits;     // games for which UnpackGame mode 2 answers 1
    std::set<int32_t> deleted;  // games whose deleted flag a header load sets (other flags: `results`)
    std::vector<int32_t> keyGames;  // what DbsCBSearchKey visits, in order
    int32_t loaded = 0;         // the game last loaded by GetGameHeader or UnpackGame
};

// The one instance; reset by ResetSearchFakes, not by ResetFakes.
FakeSearchStore& SearchFakes();
void ResetSearchFakes();

#endif
