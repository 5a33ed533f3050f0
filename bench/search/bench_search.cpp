// Search throughput on a game file of at least 1,000,000 games: a header
// search with a two-group query, and position searches for 20 positions taken
// from real games at plies 8 to 40. The file is built once from the
// self-play corpus, imported as often as needed, and kept beside this program
// (search-games.ovg) for later runs. Position searches also report the share
// of games the store's signature rejected without replaying a move.
// Usage: bench_search [benchmark flags] [file.ovg]
#include <benchmark/benchmark.h>

#include <chrono>
#include <ctime>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "frame/library_attach.h"
#include "orvan.h"
#include "ovgame/pattern_statistics.h"

namespace {

namespace fs = std::filesystem;

const std::string CorpusPath = ORVAN_SOURCE_DIR "/../shared/corpus/selfplay.pgn";
constexpr int32_t WantedGames = 1000000;
constexpr int PositionCount = 20;

struct SearchFile {
    OvGameFile file = 0;
    int32_t games = 0;
    std::string problem;
};

fs::path CachePath;

// Opens the cached file, or builds it from the corpus when it is missing or
// too small.
SearchFile& TheFile()
{
    static SearchFile searched = [] {
        SearchFile s;
        s.file = OvOpenGamefile(CachePath.c_str());
        if (s.file != 0 && OvGetGamesCount(s.file) >= WantedGames) {
            s.games = OvGetGamesCount(s.file);
            return s;
        }
        if (s.file != 0)
            OvCloseGamefile(s.file);
        if (!fs::exists(CorpusPath)) {
            s.problem = "no corpus at " + CorpusPath;
            return s;
        }
        std::fprintf(stderr, "building %s from %s ...\n", CachePath.c_str(), CorpusPath.c_str());
        const auto start = std::chrono::steady_clock::now();
        s.file = OvCreateGamefile(CachePath.c_str());
        OvStartBulkOperation(s.file, OV_BULK_WRITE);
        while (OvGetGamesCount(s.file) < WantedGames) {
            const int32_t before = OvGetGamesCount(s.file);
            OvPgnImport(CorpusPath.c_str(), s.file, 0, nullptr, nullptr, 0);
            if (OvGetGamesCount(s.file) == before) {
                s.problem = "the import stores no games";
                break;
            }
        }
        OvEndBulkOperation(s.file);
        s.games = OvGetGamesCount(s.file);
        std::fprintf(stderr, "%d games in %.0f s\n", s.games,
                     std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
        return s;
    }();
    return searched;
}

bool NeedFile(benchmark::State& state)
{
    if (TheFile().file != 0 && TheFile().problem.empty())
        return true;
    state.SkipWithError(TheFile().problem.empty() ? "cannot open or build the game file" : TheFile().problem.c_str());
    return false;
}

struct Count {
    int64_t hits = 0;
};

// Seconds of the calling thread's processor time: on a machine shared with
// other work the real time says more about the load than about the search.
double ThreadCpuSeconds()
{
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return double(now.tv_sec) + double(now.tv_nsec) * 1e-9;
}

// Runs `search` once per iteration and reports games per second, of real
// time and of the thread's processor time.
template <class Search>
void MeasureSearches(benchmark::State& state, Search search)
{
    Count count;
    double realSeconds = 0;
    double cpuSeconds = 0;
    for (auto _ : state) {
        count = Count{};
        const auto realStart = std::chrono::steady_clock::now();
        const double cpuStart = ThreadCpuSeconds();
        search(count);
        cpuSeconds += ThreadCpuSeconds() - cpuStart;
        realSeconds += std::chrono::duration<double>(std::chrono::steady_clock::now() - realStart).count();
    }
    const double searched = double(TheFile().games) * double(state.iterations());
    state.counters["games_per_s"] = searched / realSeconds;
    state.counters["games_per_cpu_s"] = searched / cpuSeconds;
    state.counters["hits"] = double(count.hits);
    state.counters["games"] = double(TheFile().games);
}

int32_t CountHits(uint32_t game, int32_t number, int32_t, intptr_t user)
{
    auto& count = *reinterpret_cast<Count*>(user);
    if (game != 0)
        ++count.hits;
    return 1;
}

void SetCondition(sQuery& query, int row, int group, int32_t field, int32_t op, const char* value)
{
    query.conditions[row][group].field = field;
    query.conditions[row][group].op = op;
    std::snprintf(query.conditions[row][group].value, OV_QUERY_VALUE_SIZE, "%s", value);
}

// The wins of one player with either colour.
void BM_HeaderSearchTwoGroups(benchmark::State& state)
{
    if (!NeedFile(state))
        return;
    sQuery query{};
    query.kind = QueryHeader;
    SetCondition(query, 0, 0, QfWhite, QopEquals, "Jensen, Rosa");
    SetCondition(query, 1, 0, QfResult, QopEquals, "1-0");
    SetCondition(query, 0, 1, QfBlack, QopEquals, "Jensen, Rosa");
    SetCondition(query, 1, 1, QfResult, QopEquals, "0-1");
    MeasureSearches(state, [&](Count& count) {
        OvSearchGameHdrs(TheFile().file, &query, &CountHits, reinterpret_cast<intptr_t>(&count));
    });
}
BENCHMARK(BM_HeaderSearchTwoGroups)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);

// Position `index`: from game 1 + 2311 * index, at ply 8 + (32 * index) / 19.
sPosition PositionFromGame(int index)
{
    sPosition position{};
    const OvGameBuffer game = OvAllocGameBuffer();
    OvReadGame(game, TheFile().file, 1 + 2311 * index);
    OvGotoMove(game, 8 + (32 * index) / (PositionCount - 1));
    OvGetCurrentPos(game, &position);
    OvFreeGameBuffer(game);
    return position;
}

void BM_PositionSearch(benchmark::State& state)
{
    if (!NeedFile(state))
        return;
    const sPosition position = PositionFromGame(static_cast<int>(state.range(0)));
    OvgGetPatternStatistics(1);
    MeasureSearches(state, [&](Count& count) {
        OvSearchPosGames(TheFile().file, &position, 0, &CountHits, reinterpret_cast<intptr_t>(&count));
    });
    const OvgPatternStatistics tests = OvgGetPatternStatistics(1);
    state.counters["signature_rejects"] = double(tests.rejectedBySignature) / double(tests.tested);
}
BENCHMARK(BM_PositionSearch)->DenseRange(0, PositionCount - 1)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(1);

}  // namespace

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    CachePath = argc > 1 ? fs::path(argv[1]) : fs::canonical("/proc/self/exe").parent_path() / "search-games.ovg";
    LibraryAttach(LocaleSource{});
    benchmark::RunSpecifiedBenchmarks();
    if (TheFile().file != 0)
        OvCloseGamefile(TheFile().file);
    LibraryDetach();
    benchmark::Shutdown();
    return 0;
}
