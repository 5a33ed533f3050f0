// orvan create: a new, empty game file.
#include <fmt/format.h>

#include <memory>

#include "commands.h"
#include "game_file.h"

namespace orvan_cli {

Command AddCreateCommand(CLI::App& root)
{
    struct Options {
        std::string path;
        bool force = false;
    };
    auto options = std::make_shared<Options>();
    CLI::App* app = root.add_subcommand("create", "Create an empty game file");
    app->add_option("FILE", options->path, "The game file to create")->required();
    app->add_flag("-f,--force", options->force, "Replace a file that exists");
    return {app, [options] {
                GameFile file = GameFile::Create(options->path, options->force);
                fmt::print("created {}\n", file.Path());
                return 0;
            }};
}

}  // namespace orvan_cli
