// orvan sort: the games of a game file in the order of a header field.
#include <fmt/format.h>

#include <array>
#include <map>
#include <memory>
#include <vector>

#include "cli_error.h"
#include "commands.h"
#include "game_file.h"
#include "search_hits.h"

namespace orvan_cli {

namespace {

struct SortField {
    std::string_view name;
    int32_t kind;
};

constexpr std::array<SortField, 18> kSortFields = {{
    {"event", HdrPlace},       {"site", HdrSite},         {"round", HdrRound},
    {"annotator", HdrAnnotator}, {"white", HdrWhite},     {"black", HdrBlack},
    {"whitecountry", HdrWhiteCountry}, {"blackcountry", HdrBlackCountry},
    {"whiteelo", HdrWhiteElo}, {"blackelo", HdrBlackElo}, {"whitetitle", HdrWhiteTitle},
    {"blacktitle", HdrBlackTitle}, {"eco", HdrKeycode},  {"result", HdrResult},
    {"date", HdrDate},         {"remark", HdrRemark},     {"moves", HdrMoves},
    {"number", HdrSourceLoadnumber},
}};

int32_t SortKind(const std::string& name)
{
    for (const auto& field : kSortFields)
        if (field.name == name)
            return field.kind;
    std::string names;
    for (const auto& field : kSortFields)
        names += fmt::format(" {}", field.name);
    throw CliError(kExitUsage, fmt::format("--by: unknown field '{}' (fields:{})", name, names));
}

}  // namespace

Command AddSortCommand(CLI::App& root)
{
    struct Options {
        std::string gameFile;
        std::string by = "date";
        std::string indexDir;
        bool descending = false;
        bool includeDeleted = false;
        size_t limit = 0;
    };
    auto options = std::make_shared<Options>();
    CLI::App* app = root.add_subcommand("sort", "List games in the order of a header field");
    app->add_option("FILE", options->gameFile, "The game file")->required();
    app->add_option("-b,--by", options->by, "The field: date, white, black, event, eco, result, moves, ...")
        ->capture_default_str();
    app->add_flag("-d,--descending", options->descending, "Largest first");
    app->add_flag("--include-deleted", options->includeDeleted, "List games marked deleted too");
    app->add_option("-n,--limit", options->limit, "List only the first games");
    app->add_option("--index", options->indexDir,
                    "Write (or bring up to date) the sort indexes of the file in this directory first");
    app->footer("Equal fields keep the games' order in the file. The game file is not changed.");
    return {app, [options] {
                const int32_t kind = SortKind(options->by);
                const GameFile file = GameFile::Open(options->gameFile);
                if (!options->indexDir.empty() &&
                    OvIndexCreateUpdate(file.Handle(), options->indexDir.c_str(), 0, 0, 0, 0, 0) == 0)
                    throw CliError(kExitFailed, options->indexDir + ": the sort indexes cannot be written there");
                sQuery everything{};
                everything.kind = QueryHeader;
                everything.includeDeleted = options->includeDeleted ? 1 : 0;
                std::map<int32_t, GameSummary> games;
                for (auto& summary : CollectHits(file, everything, 0))
                    games.emplace(summary.number, std::move(summary));
                if (games.empty())
                    throw CliError(kExitNoHits, "no game to sort");
                std::vector<int32_t> order(games.size());
                const int32_t result =
                    OvIndexSort(file.Handle(), reinterpret_cast<intptr_t>(order.data()), 1, options->includeDeleted ? 0 : 1,
                                static_cast<int32_t>(order.size()), kind, options->descending ? 0 : 1);
                if (result != OV_SORT_DONE)
                    throw CliError(kExitFailed, fmt::format("the game store could not sort (code {})", result));
                if (options->limit != 0 && order.size() > options->limit)
                    order.resize(options->limit);
                std::vector<GameSummary> sorted;
                for (int32_t number : order) {
                    const auto found = games.find(number);
                    if (found == games.end())
                        throw CliError(kExitFailed, fmt::format("the sort named game {}, which is not listed", number));
                    sorted.push_back(found->second);
                }
                PrintGameTable(sorted);
                return 0;
            }};
}

}  // namespace orvan_cli
