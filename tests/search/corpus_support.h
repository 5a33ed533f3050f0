// The corpus prefix the integration tests search, and a callback that
// collects what a search reports.
#ifndef ORVAN_TESTS_SEARCH_CORPUS_SUPPORT_H
#define ORVAN_TESTS_SEARCH_CORPUS_SUPPORT_H

#include <cstring>
#include <fstream>
#include <map>
#include <string>
#include <vector>

#include "orvan.h"

inline const std::string CorpusPath = ORVAN_SOURCE_DIR "/../shared/corpus/selfplay.pgn";

using Tags = std::map<std::string, std::string>;

// Copies the first `games` games of the corpus to `path`, without their
// opening tags (ECO, Opening, Variation, SubVariation) when `openingTags` is
// false; returns the tag pairs of each game copied, none when the corpus is missing.
inline std::vector<Tags> CopyCorpusPrefix(const std::string& path, int games, bool openingTags = true)
{
    std::vector<Tags> copied;
    std::ifstream in(CorpusPath, std::ios::binary);
    if (!in)
        return copied;
    std::ofstream out(path, std::ios::binary);
    std::string line;
    while (std::getline(in, line)) {
        if (line.starts_with("[Event ")) {
            if (static_cast<int>(copied.size()) == games)
                break;
            copied.emplace_back();
        }
        if (!openingTags && (line.starts_with("[ECO ") || line.starts_with("[Opening ") ||
                             line.starts_with("[Variation ") || line.starts_with("[SubVariation ")))
            continue;
        if (line.starts_with("[") && !copied.empty()) {
            const size_t quote = line.find('"');
            const size_t end = line.rfind('"');
            if (quote != std::string::npos && end > quote)
                copied.back()[line.substr(1, line.find(' ') - 1)] = line.substr(quote + 1, end - quote - 1);
        }
        out << line << '\n';
    }
    return copied;
}

struct Hits {
    std::vector<int32_t> numbers;
    std::vector<uint32_t> games;
    int32_t total = -1;
    int calls = 0;
    int stopAfterHits = -1;
    const sPosition* wanted = nullptr;  // when set: count hits whose game stands on it
    int woundRight = 0;
};

inline int32_t CollectHits(uint32_t game, int32_t number, int32_t total, intptr_t user)
{
    auto& hits = *reinterpret_cast<Hits*>(user);
    ++hits.calls;
    hits.total = total;
    if (game == 0)
        return 1;
    hits.numbers.push_back(number);
    hits.games.push_back(game);
    sPosition here;
    if (hits.wanted != nullptr && OvGetCurrentPos(game, &here) == 1 && std::memcmp(&here, hits.wanted, sizeof here) == 0)
        ++hits.woundRight;
    return static_cast<int>(hits.numbers.size()) == hits.stopAfterHits ? 0 : 1;
}

inline intptr_t UserOf(Hits& hits) { return reinterpret_cast<intptr_t>(&hits); }

#endif
