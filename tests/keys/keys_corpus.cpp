#include "keys/keys_corpus.h"

#include <fstream>
#include <iterator>

#include "ovkey/eco_tree/eco_tree.h"

namespace fs = std::filesystem;

bool OpenEcoDatabase(const fs::path& gameFile)
{
    std::ifstream input(EcoPath, std::ios::binary);
    if (!input)
        return false;
    const std::string text((std::istreambuf_iterator<char>(input)), std::istreambuf_iterator<char>());
    if (OvOpenDatabase(gameFile.c_str(), OV_KEYDB_CREATE) != 1)
        return false;
    return ovkey::BuildEcoTree(ovkey::ReadEcoLines(text)).keys > 0;
}
