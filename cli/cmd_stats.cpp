// orvan stats: counts of results, ECO families and years as text histograms.
#include <fmt/format.h>

#include <algorithm>
#include <map>
#include <memory>

#include "commands.h"
#include "game_file.h"
#include "game_header.h"
#include "table.h"

namespace orvan_cli {

namespace {

constexpr size_t kBarWidth = 40;
// Years are grouped by decade when they span more than this many.
constexpr int32_t kMaxSingleYears = 25;

struct Counts {
    int64_t games = 0, deleted = 0;
    std::map<std::string, int64_t> results, families;
    std::map<int32_t, int64_t> years;
};

void PrintHistogram(const std::string& title, const std::map<std::string, int64_t>& counts)
{
    if (counts.empty())
        return;
    int64_t largest = 0;
    size_t labelWidth = 0;
    for (const auto& [label, count] : counts) {
        largest = std::max(largest, count);
        labelWidth = std::max(labelWidth, DisplayWidth(label));
    }
    fmt::print("\n{}\n", title);
    for (const auto& [label, count] : counts) {
        const size_t bar = std::max<size_t>(1, static_cast<size_t>(count * kBarWidth / largest));
        fmt::print("  {}{}  {:>6}  {}\n", label, std::string(labelWidth - DisplayWidth(label), ' '), count,
                   std::string(bar, '#'));
    }
}

std::map<std::string, int64_t> YearLabels(const std::map<int32_t, int64_t>& years)
{
    std::map<std::string, int64_t> labels;
    if (years.empty())
        return labels;
    const bool decades = years.rbegin()->first - years.begin()->first > kMaxSingleYears;
    for (const auto& [year, count] : years) {
        if (year <= 0)
            labels["unknown"] += count;
        else if (decades)
            labels[fmt::format("{}s", year / 10 * 10)] += count;
        else
            labels[std::to_string(year)] += count;
    }
    return labels;
}

Counts CountGames(const GameFile& file, bool includeDeleted)
{
    Counts counts;
    GameBuffer game;
    const int32_t total = file.GameCount();
    for (int32_t number = 1; number <= total; ++number) {
        if (OvReadGameHeader(game.Handle(), file.Handle(), number) == 0)
            continue;
        int32_t status = 0;
        OvGetHeaderInfoInt(game.Handle(), HdrStatus, &status);
        if ((status & OV_STATUS_DELETED) != 0) {
            ++counts.deleted;
            if (!includeDeleted)
                continue;
        }
        ++counts.games;
        ++counts.results[HeaderText(game.Handle(), HdrResultShort)];
        const std::string eco = HeaderText(game.Handle(), HdrKeycode);
        ++counts.families[eco.empty() ? "none" : eco.substr(0, 1)];
        ++counts.years[HeaderYear(game.Handle())];
    }
    return counts;
}

}  // namespace

Command AddStatsCommand(CLI::App& root)
{
    struct Options {
        std::string gameFile;
        bool includeDeleted = false;
    };
    auto options = std::make_shared<Options>();
    CLI::App* app = root.add_subcommand("stats", "Count results, ECO families and years");
    app->add_option("FILE", options->gameFile, "The game file")->required();
    app->add_flag("--include-deleted", options->includeDeleted, "Count games marked deleted too");
    return {app, [options] {
                const GameFile file = GameFile::Open(options->gameFile);
                const Counts counts = CountGames(file, options->includeDeleted);
                fmt::print("{}: {} games counted, {} marked deleted\n", file.Path(), counts.games, counts.deleted);
                PrintHistogram("Results", counts.results);
                PrintHistogram("ECO families", counts.families);
                PrintHistogram("Years", YearLabels(counts.years));
                return 0;
            }};
}

}  // namespace orvan_cli
