// Import of a PGN file into a new game file (read, resolve, build, store) and
// export of all its games back to PGN. Counters: games per second.
// Usage: bench_import_export [benchmark flags] [file.pgn]
#include <benchmark/benchmark.h>

#include <filesystem>
#include <string>
#include <unistd.h>

#include "frame/library_attach.h"
#include "orvan.h"

namespace {

std::string BenchFile = ORVAN_SOURCE_DIR "/../shared/corpus/selfplay.pgn";

// A directory of its own for the game files of one run, removed at the end.
class ScratchDirectory {
public:
    ScratchDirectory()
        : path_(std::filesystem::temp_directory_path() / ("orvan_bench_ie_" + std::to_string(getpid())))
    {
        std::filesystem::create_directories(path_);
    }
    ~ScratchDirectory()
    {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    std::string File(const char* name) const { return (path_ / name).string(); }

private:
    std::filesystem::path path_;
};

struct Counter {
    int32_t next = 0;
    int32_t last = 0;
};

int32_t CountUp(intptr_t userData)
{
    auto& counter = *reinterpret_cast<Counter*>(userData);
    return counter.next < counter.last ? ++counter.next : 0;
}

// Imports the bench file into a new game file; the number of games stored.
// Inside a bulk operation the games land in one transaction, as the host's
// import command does it; outside, each game is committed on its own.
int32_t ImportInto(const std::string& gamefile, bool inBulk)
{
    const OvGameFile file = OvCreateGamefile(gamefile.c_str());
    if (file == 0)
        return 0;
    if (inBulk)
        OvStartBulkOperation(file, OV_BULK_WRITE);
    OvPgnImport(BenchFile.c_str(), file, 0, "NBRQK", nullptr, 0);
    if (inBulk)
        OvEndBulkOperation(file);
    const int32_t games = OvGetGamesCount(file);
    OvCloseGamefile(file);
    return games;
}

void BM_Import(benchmark::State& state, bool inBulk)
{
    if (!std::filesystem::exists(BenchFile)) {
        state.SkipWithError(("cannot open " + BenchFile).c_str());
        return;
    }
    ScratchDirectory scratch;
    int32_t games = 0;
    for (auto _ : state)
        games = ImportInto(scratch.File("import.ovg"), inBulk);
    state.SetItemsProcessed(state.iterations() * games);
    state.counters["games"] = games;
    state.counters["games/s"] = benchmark::Counter(static_cast<double>(games) * state.iterations(),
                                                   benchmark::Counter::kIsRate);
}
BENCHMARK_CAPTURE(BM_Import, InBulk, true)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(1);
BENCHMARK_CAPTURE(BM_Import, GameByGame, false)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(1);

void BM_Export(benchmark::State& state)
{
    if (!std::filesystem::exists(BenchFile)) {
        state.SkipWithError(("cannot open " + BenchFile).c_str());
        return;
    }
    ScratchDirectory scratch;
    const std::string gamefile = scratch.File("export.ovg");
    const int32_t games = ImportInto(gamefile, true);
    const OvGameFile file = OvOpenGamefile(gamefile.c_str());
    int32_t written = 0;
    for (auto _ : state) {
        Counter counter{0, games};
        written = OvExportGames(scratch.File("export.pgn").c_str(), file, CountUp, 0,
                                reinterpret_cast<intptr_t>(&counter));
    }
    OvCloseGamefile(file);
    state.SetItemsProcessed(state.iterations() * written);
    state.counters["games"] = written;
    state.counters["games/s"] = benchmark::Counter(static_cast<double>(written) * state.iterations(),
                                                   benchmark::Counter::kIsRate);
}
BENCHMARK(BM_Export)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(1);

}  // namespace

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    if (argc > 1)
        BenchFile = argv[1];
    LibraryAttach(UserLocale());
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    LibraryDetach();
    return 0;
}
