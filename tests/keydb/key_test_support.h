// Shared pieces of the key database tests: a scratch directory, boards built
// by playing coordinate moves, and a database holding a small opening tree.
#ifndef ORVAN_TESTS_KEYDB_KEY_TEST_SUPPORT_H
#define ORVAN_TESTS_KEYDB_KEY_TEST_SUPPORT_H

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <vector>

#include "orvan.h"
#include "siblings/driver_records.h"
#include "tests/store/store_helpers.h"

// A line of moves from the start position and the board it leads to. Moves
// are coordinates ("e2e4", "e1g1"); no legality is checked.
struct BoardLine {
    std::vector<PackedMove> moves;
    BoardRecord board{};
};
BoardLine PlayLine(std::initializer_list<const char*> moves);

// Writes `text` to the file at `path`, replacing it.
void WriteFile(const std::string& path, const std::string& text);
bool FileExists(const std::string& path);

// A database at <scratch>/games.ovg with the keys below, open for each test.
class KeyTreeTest : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    TempDir scratch;
    std::string gameFile;
    int32_t start = 0;     // A00 the start position
    int32_t e4 = 0;        // B00 1.e4
    int32_t sicilian = 0;  // B20 1.e4 c5
    int32_t nf3 = 0;       // B27 1.e4 c5 2.Nf3
    int32_t open = 0;      // C20 1.e4 e5
    int32_t d4 = 0;        // A40 1.d4
    int32_t d5 = 0;        // D00 1.d4 d5
};

#endif
