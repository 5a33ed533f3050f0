// orvan classify: the deepest key of the opening tree each game reaches.
#include <fmt/format.h>

#include <memory>

#include "cli_error.h"
#include "commands.h"
#include "game_file.h"
#include "game_header.h"
#include "game_range.h"
#include "key_database.h"
#include "table.h"

namespace orvan_cli {

Command AddClassifyCommand(CLI::App& root)
{
    struct Options {
        std::string gameFile;
        std::string games;
        int32_t maxPly = PGN_MAX_MOVES;
    };
    auto options = std::make_shared<Options>();
    CLI::App* app = root.add_subcommand("classify", "Find the opening key of games in the opening tree");
    app->add_option("FILE", options->gameFile, "The game file, with its opening tree")->required();
    app->add_option("-g,--games", options->games, "Game numbers, e.g. 5  or 1-10,15  (default: all)");
    app->add_option("--max-ply", options->maxPly, "Look no deeper than this many plies into a game")
        ->check(CLI::PositiveNumber);
    app->footer("Prints each game's key: its code, name and the ply where the game leaves the tree.\n"
                "The default opening tree of a game file is built with 'ovkey-eco-tree FILE'.");
    return {app, [options] {
                const KeyDatabase database(options->gameFile, true);
                const GameFile file = GameFile::Open(options->gameFile);
                const std::string all = fmt::format("1-{}", file.GameCount());
                if (file.GameCount() == 0)
                    throw CliError(kExitNoHits, "no game to classify");
                const auto numbers = ParseGameRange(options->games.empty() ? all : options->games, file.GameCount());
                GameBuffer game;
                Table table{{"#", "White", "Black", "ECO tag", "Key", "Code", "Name", "Ply"}, {}};
                size_t withoutKey = 0;
                for (int32_t number : numbers) {
                    if (OvReadGame(game.Handle(), file.Handle(), number) == 0)
                        throw CliError(kExitFailed, fmt::format("game {} cannot be read", number));
                    int32_t ply = 0;
                    const int32_t key = OvClassifyGame(game.Handle(), options->maxPly, &ply);
                    const KeySummary summary = DescribeKey(key);
                    withoutKey += key == 0 ? 1 : 0;
                    table.rows.push_back({std::to_string(number), HeaderText(game.Handle(), HdrWhite),
                                          HeaderText(game.Handle(), HdrBlack), HeaderText(game.Handle(), HdrKeycode),
                                          key == 0 ? "-" : std::to_string(key), summary.code, summary.name,
                                          std::to_string(ply)});
                }
                PrintTable(stdout, table);
                fmt::print("{} games, {} without a key\n", numbers.size(), withoutKey);
                return 0;
            }};
}

}  // namespace orvan_cli
