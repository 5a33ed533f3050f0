// orvan search: games by header fields or by position, as a table or JSON.
#include <fmt/format.h>

#include <memory>
#include <nlohmann/json.hpp>
#include <vector>

#include "cli_error.h"
#include "commands.h"
#include "game_file.h"
#include "position_text.h"
#include "query_text.h"
#include "search_hits.h"
#include "key_database.h"

namespace orvan_cli {

namespace {

struct Options {
    std::string gameFile;
    std::vector<std::string> conditions;
    std::string fen;
    std::string key;
    bool json = false;
    bool includeDeleted = false;
    size_t limit = 0;
};

void PrintJson(const std::vector<GameSummary>& hits)
{
    nlohmann::json list = nlohmann::json::array();
    for (const auto& hit : hits)
        list.push_back({{"number", hit.number}, {"white", hit.white}, {"black", hit.black},
                        {"result", hit.result}, {"date", hit.date}, {"event", hit.event},
                        {"eco", hit.eco}, {"moves", hit.moves}, {"deleted", hit.deleted}});
    fmt::print("{}\n", list.dump(2));
}


}  // namespace

Command AddSearchCommand(CLI::App& root)
{
    auto options = std::make_shared<Options>();
    CLI::App* app = root.add_subcommand("search", "Find games by header fields or by position");
    app->add_option("FILE", options->gameFile, "The game file to search")->required();
    app->add_option("CONDITION", options->conditions, "Header conditions, e.g. white=Müller elo>=2400");
    app->add_option("--fen", options->fen, "Find the games that reach this position (in any line)");
    app->add_option("--key", options->key,
                    "Find the games filed under an opening key: a key number or an ECO code such as B90");
    app->add_flag("--json", options->json, "Print the hits as a JSON array");
    app->add_flag("--include-deleted", options->includeDeleted, "Search games marked deleted too");
    app->add_option("-n,--limit", options->limit, "Stop after this many hits");
    app->footer(QuerySyntaxHelp() +
                "\nWithout conditions, --fen or --key every game is listed. Exit code 1 when nothing matches.");
    return {app, [options] {
                sQuery query{};
                query.includeDeleted = options->includeDeleted ? 1 : 0;
                const int ways = !options->conditions.empty() + !options->fen.empty() + !options->key.empty();
                if (ways > 1)
                    throw CliError(kExitUsage, "give one of header conditions, --fen or --key");
                if (!options->fen.empty()) {
                    query.kind = QueryPosition;
                    query.position = ParseFen(options->fen);
                } else {
                    ParseQueryWords(options->conditions, query);
                    NoteWordsBeyondAscii(options->conditions);
                }
                const KeyDatabase database(options->gameFile, !options->key.empty());
                const GameFile file = GameFile::Open(options->gameFile);
                std::vector<GameSummary> hits;
                if (options->key.empty()) {
                    hits = CollectHits(file, query, options->limit);
                } else {
                    query.kind = QueryKeyGames;
                    for (int32_t key : FindKeys(options->key)) {
                        query.key = key;
                        for (auto& hit : CollectHits(file, query, 0))
                            hits.push_back(std::move(hit));
                    }
                    if (options->limit != 0 && hits.size() > options->limit)
                        hits.resize(options->limit);
                }
                if (options->json)
                    PrintJson(hits);
                else {
                    PrintGameTable(hits);
                    fmt::print("{} game{}\n", hits.size(), hits.size() == 1 ? "" : "s");
                }
                return hits.empty() ? static_cast<int>(kExitNoHits) : 0;
            }};
}

}  // namespace orvan_cli
