// Runs a search on a game file and collects its hits with the header fields a
// person wants to see of each.
#ifndef ORVAN_CLI_SEARCH_HITS_H
#define ORVAN_CLI_SEARCH_HITS_H

#include <cstdint>
#include <string>
#include <vector>

#include "game_file.h"
#include "orvan.h"

namespace orvan_cli {

struct GameSummary {
    int32_t number = 0;
    std::string white, black, result, date, event, eco;
    int32_t moves = 0;
    bool deleted = false;
};

// The summary of the game in `game`, which holds game `number`.
GameSummary SummariseGame(OvGameBuffer game, int32_t number);

// The hits of `query` on `file`, in file order, at most `limit` (0: all). A
// header query without conditions that includes deleted games lists every game.
std::vector<GameSummary> CollectHits(const GameFile& file, const sQuery& query, size_t limit);

// Prints one row per game: number (D when deleted), players, result, date,
// event, ECO and moves.
void PrintGameTable(const std::vector<GameSummary>& games);

// The summaries of games `numbers` of `file`, read header by header.
std::vector<GameSummary> SummariseGames(const GameFile& file, const std::vector<int32_t>& numbers);

}  // namespace orvan_cli

#endif
