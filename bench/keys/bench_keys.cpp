// Classification of every game of a PGN file against the ECO key tree, in
// games per CPU second (only the OvClassifyGame calls are timed; reading the
// games into their buffers, a batch at a time, is not), and sorts of a file of
// 1,000,000 games by White and by date, from the packed records and from index
// files.
// The game files are made once and kept under /tmp/orvan-bench-keys: the
// corpus, and the big file made by importing the corpus repeatedly.
// Usage: bench_keys [benchmark flags] [file.pgn]
#include <benchmark/benchmark.h>

#include <time.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "frame/library_attach.h"
#include "orvan.h"
#include "ovkey/eco_tree/eco_tree.h"

namespace {

namespace fs = std::filesystem;

std::string PgnPath = ORVAN_SOURCE_DIR "/../shared/corpus/selfplay.pgn";
const fs::path CacheDirectory = "/tmp/orvan-bench-keys";
const char* const EcoPath = "/usr/share/pgn-extract/eco.pgn";
constexpr int32_t BigFileGames = 1000000;
// Games read before each timed run of classifications: asking the thread's
// clock is a system call of a microsecond or more, a large part of one game's
// classification, so it is asked once per batch.
constexpr int32_t BatchGames = 64;

// The game file at `path` with at least `games` games, made by importing
// the PGN file as often as needed, or kept from an earlier run. 0 on failure.
OvGameFile GameFileWith(const fs::path& path, int32_t games)
{
    fs::create_directories(CacheDirectory);
    OvGameFile file = fs::exists(path) ? OvOpenGamefile(path.c_str()) : 0;
    if (file == 0)
        file = OvCreateGamefile(path.c_str());
    while (file != 0 && OvGetGamesCount(file) < games) {
        const int32_t before = OvGetGamesCount(file);
        OvStartBulkOperation(file, OV_BULK_WRITE);
        OvPgnImport(PgnPath.c_str(), file, 0, nullptr, nullptr, 0);
        OvEndBulkOperation(file);
        if (OvGetGamesCount(file) == before)
            return 0;
    }
    return file;
}

// CPU time of this thread: the machine is shared, so wall time would count
// other programs' work.
double ThreadSeconds()
{
    timespec now;
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return double(now.tv_sec) + 1e-9 * double(now.tv_nsec);
}

// Opens a fresh key database holding the ECO tree.
bool OpenEcoDatabase()
{
    std::ifstream input(EcoPath, std::ios::binary);
    const std::string text((std::istreambuf_iterator<char>(input)), std::istreambuf_iterator<char>());
    const fs::path database = CacheDirectory / "eco" / "eco.ovg";
    fs::remove_all(database.parent_path());
    fs::create_directories(database.parent_path());
    return !text.empty() && OvOpenDatabase(database.c_str(), OV_KEYDB_CREATE) == 1 &&
           ovkey::BuildEcoTree(ovkey::ReadEcoLines(text)).keys > 0;
}

void BM_ClassifyGame(benchmark::State& state)
{
    const OvGameFile file = GameFileWith(CacheDirectory / "corpus.ovg", 1);
    if (file == 0 || !OpenEcoDatabase()) {
        state.SkipWithError("no corpus game file or no ECO tree");
        return;
    }
    std::vector<OvGameBuffer> batch(BatchGames);
    for (OvGameBuffer& game : batch)
        game = OvAllocGameBuffer();
    const int32_t games = OvGetGamesCount(file);
    int64_t classified = 0;
    for (auto _ : state) {
        double spent = 0;
        for (int32_t first = 1; first <= games; first += BatchGames) {
            const int32_t count = std::min(BatchGames, games - first + 1);
            for (int32_t i = 0; i < count; ++i)
                OvReadGame(batch[size_t(i)], file, first + i);
            const double start = ThreadSeconds();
            for (int32_t i = 0; i < count; ++i) {
                int32_t reached = 0;
                benchmark::DoNotOptimize(OvClassifyGame(batch[size_t(i)], INT32_MAX, &reached));
            }
            spent += ThreadSeconds() - start;
        }
        classified += games;
        state.SetIterationTime(spent);
    }
    state.counters["games"] = games;
    state.counters["games/s"] = benchmark::Counter(double(classified), benchmark::Counter::kIsRate);
    for (OvGameBuffer game : batch)
        OvFreeGameBuffer(game);
    OvCloseDatabase(0);
    OvCloseGamefile(file);
}
BENCHMARK(BM_ClassifyGame)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(3);

// Sorts the big file by `kind`; with `indexed` from index files made first.
void SortBigFile(benchmark::State& state, int32_t kind, bool indexed)
{
    const OvGameFile file = GameFileWith(CacheDirectory / "million.ovg", BigFileGames);
    if (file == 0) {
        state.SkipWithError("cannot make the big game file");
        return;
    }
    if (indexed && OvIndexCreateUpdate(file, (CacheDirectory / "index").c_str(), 0, 0, 0, 0, 0) == 0) {
        state.SkipWithError("cannot make the index files");
        return;
    }
    const int32_t games = OvGetGamesCount(file);
    std::vector<int32_t> numbers(static_cast<size_t>(games));
    for (auto _ : state) {
        const int32_t result = OvIndexSort(file, reinterpret_cast<intptr_t>(numbers.data()), 1, 0, games, kind, 1);
        if (result != OV_SORT_DONE)
            state.SkipWithError("sort failed");
        benchmark::DoNotOptimize(numbers.data());
    }
    state.counters["games"] = games;
    OvCloseGamefile(file);
}

void BM_SortByWhite(benchmark::State& state) { SortBigFile(state, HdrWhite, false); }
void BM_SortByDate(benchmark::State& state) { SortBigFile(state, HdrDate, false); }
void BM_SortByWhiteIndexed(benchmark::State& state) { SortBigFile(state, HdrWhite, true); }
void BM_SortByDateIndexed(benchmark::State& state) { SortBigFile(state, HdrDate, true); }
BENCHMARK(BM_SortByWhite)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);
BENCHMARK(BM_SortByDate)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);
BENCHMARK(BM_SortByWhiteIndexed)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);
BENCHMARK(BM_SortByDateIndexed)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);

}  // namespace

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    if (argc > 1)
        PgnPath = argv[1];
    LibraryAttach(UserLocale());
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    LibraryDetach();
    return 0;
}
