// Every game of real PGN files, read with moves resolved, against the game
// and move counts of an independent PGN tool run on the same file.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <sstream>
#include <string>
#include <unistd.h>
#include <vector>

#include "pgn/pgn_game.h"
#include "pgn/read/pgn_read.h"
#include "support/capture.h"
#include "support/corpus.h"

namespace {

constexpr const char* PgnExtract = "/usr/games/pgn-extract";

// Main-line plies per game as the tool counts them: one line of UCI moves
// per game, the result last.
std::vector<size_t> ToolPlyCounts(const std::string& path)
{
    std::string command = std::string(PgnExtract) + " -s -Wuci --notags -C -N -V -w 1000000 '" +
                          path + "' 2>/dev/null";
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> pipe(popen(command.c_str(), "r"), &pclose);
    std::vector<size_t> counts;
    std::string line;
    char buffer[1 << 16];
    while (pipe && std::fgets(buffer, sizeof buffer, pipe.get()) != nullptr) {
        line += buffer;
        if (line.back() != '\n')
            continue;
        std::istringstream words(line);
        line.clear();
        size_t count = 0;
        for (std::string word; words >> word;)
            ++count;
        if (count > 0)
            counts.push_back(count - 1);
    }
    return counts;
}

int32_t KeepMainLine(PgnGame* game, int32_t, int32_t, intptr_t context)
{
    auto& counts = *reinterpret_cast<std::vector<size_t>*>(context);
    counts.push_back(game->moveCount);
    return counts.size() < CorpusGameLimit ? 1 : 0;
}

void CompareWithTool(const std::string& path)
{
    if (access(PgnExtract, X_OK) != 0)
        GTEST_SKIP() << PgnExtract << " is not installed";
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "rb"), &std::fclose);
    if (!file)
        GTEST_SKIP() << path << " is not there";
    std::vector<size_t> expected = ToolPlyCounts(path);
    ASSERT_FALSE(expected.empty()) << "no game counts from " << PgnExtract;

    TraceCapture trace;
    PgnGameStorage storage;
    ASSERT_TRUE(storage.Allocated());
    std::vector<size_t> counts;
    PgnSource source;
    source.file = file.get();
    PgnReadGames(source, storage.Game(), 0, "NBRQK", &KeepMainLine, reinterpret_cast<intptr_t>(&counts));

    for (const std::string& line : trace.lines)
        ASSERT_EQ(line.find("illegal"), std::string::npos) << line;
    ASSERT_EQ(counts.size(), std::min(expected.size(), CorpusGameLimit));
    for (size_t i = 0; i < counts.size(); ++i)
        ASSERT_EQ(counts[i], expected[i]) << "game " << i + 1 << " of " << path;
}

TEST(PgnReadRealFiles, EcoFileMatchesTool) { CompareWithTool(EcoPath); }
TEST(PgnReadRealFiles, SelfplayCorpusMatchesTool) { CompareWithTool(CorpusPath); }

}  // namespace
