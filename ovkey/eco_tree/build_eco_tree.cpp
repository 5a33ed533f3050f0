// ovkey-eco-tree: builds the default opening key tree for a game file from an
// ECO classification file.
#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>

#include "ovkey/eco_tree/eco_tree.h"
#include "siblings/game_driver.h"
#include "siblings/key_database.h"

namespace {

constexpr const char* kDefaultEcoFile = "/usr/share/pgn-extract/eco.pgn";

int Usage()
{
    std::fprintf(stderr,
                 "usage: ovkey-eco-tree GAMEFILE [ECOFILE]\n"
                 "Builds the opening key tree of the key database of GAMEFILE (made when\n"
                 "missing) from ECOFILE, by default %s.\n",
                 kDefaultEcoFile);
    return 2;
}

}  // namespace

int main(int argc, char** argv)
{
    if (argc < 2 || argc > 3 || argv[1][0] == '-')
        return Usage();
    const char* gameFile = argv[1];
    const char* ecoFile = argc == 3 ? argv[2] : kDefaultEcoFile;

    std::ifstream input(ecoFile, std::ios::binary);
    if (!input) {
        std::fprintf(stderr, "ovkey-eco-tree: cannot read %s\n", ecoFile);
        return 1;
    }
    const std::string text((std::istreambuf_iterator<char>(input)), std::istreambuf_iterator<char>());
    const auto lines = ovkey::ReadEcoLines(text);
    if (lines.empty()) {
        std::fprintf(stderr, "ovkey-eco-tree: %s holds no opening lines\n", ecoFile);
        return 1;
    }

    IGInstallGameDriver(0);
    IGGameDriverInit(100);
    int status = 0;
    if (const int32_t opened = IDOpenBase(gameFile, OV_KEYDB_CREATE, 0); opened != OVK_OPEN_OK) {
        std::fprintf(stderr, "ovkey-eco-tree: cannot open the key database of %s (code %d)\n",
                     gameFile, opened);
        status = 1;
    } else if (OvkGetFirstKey(0, OV_KEYORDER_CODE) != 0) {
        std::fprintf(stderr, "ovkey-eco-tree: the key database of %s already has keys\n", gameFile);
        status = 1;
    } else {
        const ovkey::EcoTreeResult result = ovkey::BuildEcoTree(lines);
        std::printf("%d keys from %zu lines of %s; %d lines skipped\n", result.keys, lines.size(),
                    ecoFile, result.skipped);
        status = result.keys > 0 ? 0 : 1;
    }
    IDCloseBase(0);
    IGGameDriverFini();
    IGRemoveGameDriver();
    return status;
}
