// Every game of real PGN files, read with moves resolved, against the game
// and move counts of an independent PGN tool run on the same file.
#include <gtest/gtest.h>

#include <cstdio>
#include <memory>
#include <sstream>
#include <string>
#include <unistd.h>
#include <vector>

#include "pgn/pgn_game.h"
#include "pgn/read/pgn_read.h"
#include "support/capture.h"

namespace {

#if defined(__SANITIZE_ADDRESS__)
constexpr size_t GameLimit = 3000;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
constexpr size_t GameLimit = 3000;
#else
constexpr size_t GameLimit = SIZE_MAX;
#endif
#else
constexpr size_t GameLimit = SIZE_MAX;
#endif

constexpr const char* PgnExtract = "/usr/games/pgn-extract";

struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
struct PipeCloser {
    void operator()(std::FILE* pipe) const { pclose(pipe); }
};

// Main-line plies per game as the tool counts them: one line of UCI moves
// per game, the result last.
std::vector<size_t> ToolPlyCounts(const std::string& path)
{
    std::string command = std::string(PgnExtract) + " -s -Wuci --notags -C -N -V -w 1000000 '" +
                          path + "' 2>/dev/null";
    std::unique_ptr<std::FILE, PipeCloser> pipe(popen(command.c_str(), "r"));
    std::vector<size_t> counts;
    if (!pipe) {
        return counts;
    }
    std::string line;
    char buffer[1 << 16];
    while (std::fgets(buffer, sizeof buffer, pipe.get()) != nullptr) {
        line += buffer;
        if (line.empty() || line.back() != '\n') {
            continue;
        }
        std::istringstream words(line);
        line.clear();
        size_t count = 0;
        std::string word;
        while (words >> word) {
            ++count;
        }
        if (count > 0) {
            counts.push_back(count - 1);
        }
    }
    return counts;
}

struct MainLines {
    std::vector<size_t> counts;
};

int32_t KeepMainLine(PgnGame* game, int32_t, int32_t, intptr_t context)
{
    auto* lines = reinterpret_cast<MainLines*>(context);
    lines->counts.push_back(game->moveCount);
    return lines->counts.size() < GameLimit ? 1 : 0;
}

void CompareWithTool(const std::string& path)
{
    if (access(PgnExtract, X_OK) != 0) {
        GTEST_SKIP() << PgnExtract << " is not installed";
    }
    std::unique_ptr<std::FILE, FileCloser> file(std::fopen(path.c_str(), "rb"));
    if (!file) {
        GTEST_SKIP() << path << " is not there";
    }
    std::vector<size_t> expected = ToolPlyCounts(path);
    ASSERT_FALSE(expected.empty()) << "no game counts from " << PgnExtract;

    TraceCapture trace;
    PgnGameStorage storage;
    ASSERT_TRUE(storage.Allocated());
    MainLines lines;
    PgnSource source;
    source.file = file.get();
    PgnReadGames(source, storage.Game(), 0, "NBRQK", &KeepMainLine,
                 reinterpret_cast<intptr_t>(&lines));

    for (const std::string& line : trace.lines) {
        ASSERT_EQ(line.find("illegal"), std::string::npos) << line;
    }
    if (lines.counts.size() < GameLimit) {
        ASSERT_EQ(lines.counts.size(), expected.size());
    } else {
        ASSERT_LE(lines.counts.size(), expected.size());
    }
    for (size_t i = 0; i < lines.counts.size(); ++i) {
        ASSERT_EQ(lines.counts[i], expected[i]) << "game " << i + 1 << " of " << path;
    }
}

TEST(PgnReadRealFiles, EcoFileMatchesTool)
{
    CompareWithTool("/usr/share/pgn-extract/eco.pgn");
}

TEST(PgnReadRealFiles, SelfplayCorpusMatchesTool)
{
    CompareWithTool(ORVAN_SOURCE_DIR "/../shared/corpus/selfplay.pgn");
}

}  // namespace
