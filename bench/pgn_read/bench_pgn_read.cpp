// Reads every game of a PGN file (by default the largest corpus file) with
// moves resolved, and tags only. Counters: games per second and bytes per
// second of CPU time (the machine is shared, so CPU time is the steadier
// figure). Usage: bench_pgn_read [benchmark flags] [file.pgn]
#include <benchmark/benchmark.h>

#include <cstdio>
#include <memory>
#include <string>
#include <sys/stat.h>

#include "pgn/pgn_game.h"
#include "pgn/read/pgn_read.h"

namespace {

std::string BenchFile = ORVAN_SOURCE_DIR "/../shared/corpus/selfplay.pgn";

struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

struct Tally {
    int64_t games = 0;
    int64_t moves = 0;
};

int32_t CountGame(PgnGame* game, int32_t, int32_t movesRead, intptr_t context)
{
    auto* tally = reinterpret_cast<Tally*>(context);
    ++tally->games;
    tally->moves += movesRead ? game->moveCount : 0;
    return 1;
}

void ReadWholeFile(benchmark::State& state, uint32_t flags)
{
    struct stat info {};
    if (stat(BenchFile.c_str(), &info) != 0) {
        state.SkipWithError(("cannot open " + BenchFile).c_str());
        return;
    }
    PgnGameStorage storage;
    Tally tally;
    for (auto _ : state) {
        std::unique_ptr<std::FILE, FileCloser> file(std::fopen(BenchFile.c_str(), "rb"));
        PgnSource source;
        source.file = file.get();
        tally = Tally{};
        PgnReadGames(source, storage.Game(), flags, "NBRQK", &CountGame,
                     reinterpret_cast<intptr_t>(&tally));
    }
    state.SetItemsProcessed(state.iterations() * tally.games);
    state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(info.st_size));
    state.counters["games"] = static_cast<double>(tally.games);
    state.counters["moves"] = static_cast<double>(tally.moves);
}

void BM_ReadPgnFile(benchmark::State& state)
{
    ReadWholeFile(state, 0);
}
BENCHMARK(BM_ReadPgnFile)->Unit(benchmark::kMillisecond);

void BM_ReadPgnFileTagsOnly(benchmark::State& state)
{
    ReadWholeFile(state, PgnTagsOnly);
}
BENCHMARK(BM_ReadPgnFileTagsOnly)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    if (argc > 1) {
        BenchFile = argv[1];
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
