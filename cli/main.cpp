// orvan: the command-line host of liborvan.
#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <cstdio>
#include <vector>

#include "cli_error.h"
#include "commands.h"
#include "orvan.h"

namespace {

using namespace orvan_cli;

constexpr const char* kFooter =
    "Run 'orvan COMMAND --help' for the options of a command.\n"
    "\n"
    "Exit codes:\n"
    "  0  done\n"
    "  1  search or export: no game matched\n"
    "  2  bad command line: unknown option, bad game range, query or FEN\n"
    "  3  bad input: a file that is missing, unreadable or not a game file\n"
    "  4  the work failed: a file could not be written, the library refused";

// Prints the library's version words and whether both siblings are acceptable.
int PrintVersion()
{
    uint32_t version = 0, second = 0;
    int32_t siblingsAcceptable = OvGetVersion(&version, &second);
    std::printf("orvan %u.%u (library version word %08X, second word %08X)\n", version >> 16,
                version & 0xFFFFu, version, second);
    std::printf("game store and key database: %s\n",
                siblingsAcceptable != 0 ? "acceptable" : "NOT acceptable");
    return siblingsAcceptable != 0 ? 0 : 1;
}

void PrintTrace(const char* text, intptr_t) { std::fprintf(stderr, "%s\n", text); }

}  // namespace

int main(int argc, char** argv)
{
    CLI::App app{"orvan: a chess game database on the command line"};
    app.footer(kFooter);
    app.require_subcommand(0, 1);
    bool showVersion = false, verbose = false;
    app.add_flag("--version", showVersion, "Show the version words and check the siblings");
    app.add_flag("-v,--verbose", verbose, "Print the library's notes on the input to standard error");

    const std::vector<Command> commands = {
        AddCreateCommand(app), AddImportCommand(app), AddExportCommand(app),
        AddShowCommand(app),   AddSearchCommand(app), AddDeleteCommand(app),
        AddUndeleteCommand(app), AddStatsCommand(app),  AddClassifyCommand(app),
        AddKeysCommand(app),     AddSortCommand(app)};

    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        const int code = app.exit(error);
        return code == 0 ? kExitOk : kExitUsage;
    }
    if (showVersion)
        return PrintVersion();
    if (verbose)
        OvSetDebugSink(PrintTrace, 0);
    for (const auto& command : commands) {
        if (!command.app->parsed())
            continue;
        try {
            return command.run();
        } catch (const CliError& error) {
            std::fflush(stdout);
            fmt::print(stderr, "orvan {}: {}\n", command.app->get_name(), error.what());
            return error.Code();
        }
    }
    std::printf("%s", app.help().c_str());
    return kExitOk;
}
