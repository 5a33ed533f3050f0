// Reads PGN text or files through the reader and keeps what each callback saw, for tests to compare.
#ifndef ORVAN_TESTS_SUPPORT_READ_GAMES_H
#define ORVAN_TESTS_SUPPORT_READ_GAMES_H

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "orvan.h"

struct ReadGame {
    std::array<std::string, PGN_TAG_COUNT> tags;
    uint32_t moveCount = 0;
    uint32_t treeCount = 0;
    uint32_t firstMoveNumber = 0;
    int32_t resultToken = 0;
    int32_t hasComment = 0;
    int32_t movesRead = 0;
    sPosition position{};
    std::vector<PackedMove> moves;  // all entries of the tree, markers included
    // By annotation index (0 the game, i + 1 the entry moves[i]); only set entries.
    std::map<uint32_t, uint16_t> nags;
    std::map<uint32_t, std::string> comments;

    const std::string& Tag(int32_t number) const { return tags[number - 1]; }
    // The tree as MoveWord words.
    std::vector<std::string> Words() const;
    // Tree, counts, first move, start position, glyphs and comments in one line, to compare two reads.
    std::string Record() const;
};

// "e2e4", "e7e8n": the move with "*" behind it for MoveBranch and "|" for MoveLineEnd.
std::string MoveWord(uint16_t move);

ReadGame Capture(const PgnGame& game, int32_t hasComment = 0, int32_t movesRead = 1);

// Reads all games of `text` (handed over with its terminating NUL) with a
// callback that keeps each game and goes on. `stopAfter` games stop the read.
std::vector<ReadGame> ReadText(std::string_view text, uint32_t flags = 0,
                               const char* pieceLetters = "NBRQK", size_t stopAfter = SIZE_MAX,
                               int32_t* result = nullptr);

// The single game of `text`; the test fails when there is not exactly one.
ReadGame ReadOne(std::string_view text, uint32_t flags = 0, const char* pieceLetters = "NBRQK");

// Every game of a PGN file, at most `limit`; none when it cannot be opened.
std::vector<ReadGame> ReadGamesOfFile(const std::string& path, size_t limit = SIZE_MAX);

#endif
