#include "search_hits.h"

#include <algorithm>
#include <cstdlib>

#include <fmt/format.h>

#include "game_header.h"
#include "table.h"

namespace orvan_cli {

namespace {

struct Collector {
    std::vector<GameSummary> hits;
    size_t limit;
    bool numbersOnly;  // key game searches read no game: only the number is known
};

int32_t OnSearchCall(uint32_t game, int32_t number, int32_t total, intptr_t user)
{
    auto& collector = *reinterpret_cast<Collector*>(user);
    if (game == 0)
        return 1;  // start, progress and end calls
    if (collector.numbersOnly) {
        collector.hits.emplace_back();
        collector.hits.back().number = number;
    } else {
        collector.hits.push_back(SummariseGame(game, number));
    }
    return collector.limit == 0 || collector.hits.size() < collector.limit ? 1 : 0;
}

}  // namespace

GameSummary SummariseGame(OvGameBuffer game, int32_t number)
{
    GameSummary summary;
    summary.number = number;
    summary.white = HeaderText(game, HdrWhite);
    summary.black = HeaderText(game, HdrBlack);
    summary.result = HeaderText(game, HdrResultShort);
    summary.date = HeaderDate(game);
    summary.event = HeaderText(game, HdrPlace);
    summary.eco = HeaderText(game, HdrKeycode);
    summary.moves = std::atoi(HeaderText(game, HdrMoves).c_str());
    int32_t status = 0;
    OvGetHeaderInfoInt(game, HdrStatus, &status);
    summary.deleted = (status & OV_STATUS_DELETED) != 0;
    return summary;
}

std::vector<GameSummary> SummariseGames(const GameFile& file, const std::vector<int32_t>& numbers)
{
    GameBuffer game;
    std::vector<GameSummary> summaries;
    summaries.reserve(numbers.size());
    for (int32_t number : numbers)
        if (OvReadGameHeader(game.Handle(), file.Handle(), number) != 0)
            summaries.push_back(SummariseGame(game.Handle(), number));
    return summaries;
}

std::vector<GameSummary> CollectHits(const GameFile& file, const sQuery& query, size_t limit)
{
    if (query.kind == QueryHeader && query.includeDeleted != 0 && OvIsEmptyQuery(&query) != 0) {
        std::vector<int32_t> all(static_cast<size_t>(std::max(0, file.GameCount())));
        for (size_t i = 0; i < all.size(); ++i)
            all[i] = static_cast<int32_t>(i + 1);
        if (limit != 0 && all.size() > limit)
            all.resize(limit);
        return SummariseGames(file, all);
    }
    Collector collector{{}, limit, query.kind == QueryKeyGames};
    OvSearchGameHdrs(file.Handle(), &query, OnSearchCall, reinterpret_cast<intptr_t>(&collector));
    if (!collector.numbersOnly)
        return std::move(collector.hits);
    std::vector<int32_t> numbers;
    for (const auto& hit : collector.hits)
        numbers.push_back(hit.number);
    return SummariseGames(file, numbers);
}

}  // namespace orvan_cli

namespace orvan_cli {

void PrintGameTable(const std::vector<GameSummary>& games)
{
    Table table{{"#", "White", "Black", "Result", "Date", "Event", "ECO", "Moves"}, {}};
    for (const auto& game : games)
        table.rows.push_back({fmt::format("{}{}", game.number, game.deleted ? "D" : ""), game.white, game.black,
                              game.result, game.date, game.event, game.eco, std::to_string(game.moves)});
    PrintTable(stdout, table);
}

}  // namespace orvan_cli
