// The commands of the orvan host. Each Add*Command registers its subcommand
// with its options on `root` and returns what runs when it was chosen.
#ifndef ORVAN_CLI_COMMANDS_H
#define ORVAN_CLI_COMMANDS_H

#include <CLI/CLI.hpp>

#include <functional>

namespace orvan_cli {

struct Command {
    CLI::App* app;
    std::function<int()> run;  // returns the exit code; throws CliError
};

Command AddCreateCommand(CLI::App& root);
Command AddImportCommand(CLI::App& root);
Command AddExportCommand(CLI::App& root);
Command AddShowCommand(CLI::App& root);
Command AddSearchCommand(CLI::App& root);
Command AddDeleteCommand(CLI::App& root);
Command AddUndeleteCommand(CLI::App& root);
Command AddStatsCommand(CLI::App& root);
Command AddClassifyCommand(CLI::App& root);
Command AddKeysCommand(CLI::App& root);
Command AddSortCommand(CLI::App& root);

}  // namespace orvan_cli

#endif
