#include "keys/keys_corpus.h"

#include <fstream>
#include <iterator>

#include "ovkey/eco_tree/eco_tree.h"

namespace fs = std::filesystem;

bool CutCorpusPrefix(const fs::path& path, int games)
{
    std::ifstream in(CorpusPath, std::ios::binary);
    if (!in)
        return false;
    std::ofstream out(path, std::ios::binary);
    std::string line;
    int seen = 0;
    while (std::getline(in, line)) {
        if (line.starts_with("[Event ") && ++seen > games)
            break;
        if (line.starts_with("[ECO ") || line.starts_with("[Opening ") || line.starts_with("[Variation ") ||
            line.starts_with("[SubVariation "))
            continue;
        out << line << '\n';
    }
    return true;
}

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
