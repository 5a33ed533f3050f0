// orvan delete and orvan undelete: mark games deleted, or take the mark away.
#include <fmt/format.h>

#include <memory>

#include "cli_error.h"
#include "commands.h"
#include "game_file.h"
#include "game_range.h"

namespace orvan_cli {

namespace {

struct Options {
    std::string gameFile;
    std::string games;
};

Command AddMarkingCommand(CLI::App& root, const char* name, const char* summary, bool deleting)
{
    auto options = std::make_shared<Options>();
    CLI::App* app = root.add_subcommand(name, summary);
    app->add_option("FILE", options->gameFile, "The game file")->required();
    app->add_option("GAMES", options->games, "Game numbers, e.g. 5  or 1-10,15  or 20-")->required();
    return {app, [options, deleting] {
                const GameFile file = GameFile::Open(options->gameFile);
                const auto numbers = ParseGameRange(options->games, file.GameCount());
                BulkOperation bulk(file, OV_BULK_WRITE);
                for (int32_t number : numbers) {
                    const int32_t done = deleting ? OvDeleteGame(file.Handle(), number)
                                                  : OvUndeleteGame(file.Handle(), number);
                    if (done == 0)
                        throw CliError(kExitFailed, fmt::format("game {}: the game store refused", number));
                }
                fmt::print("{} {} game{}\n", deleting ? "deleted" : "undeleted", numbers.size(),
                           numbers.size() == 1 ? "" : "s");
                return 0;
            }};
}

}  // namespace

Command AddDeleteCommand(CLI::App& root)
{
    return AddMarkingCommand(root, "delete", "Mark games deleted (they stay in the file)", true);
}

Command AddUndeleteCommand(CLI::App& root)
{
    return AddMarkingCommand(root, "undelete", "Take the deleted mark from games", false);
}

}  // namespace orvan_cli
