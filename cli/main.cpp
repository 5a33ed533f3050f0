// orvan: the command-line host of liborvan.
#include <CLI/CLI.hpp>

#include <cstdio>

#include "orvan.h"

namespace {

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

}  // namespace

int main(int argc, char** argv)
{
    CLI::App app{"orvan: a chess game database"};
    app.require_subcommand(0, 1);
    bool showVersion = false;
    app.add_flag("--version", showVersion, "Show the version words and check the siblings");
    CLI11_PARSE(app, argc, argv);
    if (showVersion)
        return PrintVersion();
    std::printf("%s", app.help().c_str());
    return 0;
}
