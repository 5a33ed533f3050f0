// What the fake key browsing, classification and sort index calls deliver.
// Positions are found by how far the fake game has been played: the board
// of IGGameGetBoard names its game, and `keyAtPly` gives the key of the
// position after that many plies.
#ifndef ORVAN_TESTS_FAKE_KEY_CALLS_H
#define ORVAN_TESTS_FAKE_KEY_CALLS_H

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "siblings/driver_records.h"

struct FakeKeyStore {
    int32_t depth = 0;                    // DbsGetDatabaseDepth
    std::map<int32_t, int32_t> keyAtPly;  // OvkFindPosition by plies played
    std::vector<int32_t> searchResult;    // written by DbsSearchKey, as delivered
    BoardRecord keyBoard{};               // OvkGetKeyPosition
    std::string keycode, name, remark;    // the key texts, code page 437
};

// The one instance; reset by ResetKeyFakes, not by ResetFakes.
FakeKeyStore& KeyFakes();
void ResetKeyFakes();

#endif
