// Speed of the chess core: perft through the generator and move application,
// and the description and text of the moves of real games, the writer's
// inner loop, plus the legality test that PGN import runs for each move.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <memory>
#include <vector>

#include "chess/move_generator.h"
#include "orvan.h"
#include "pgn/pgn_game.h"
#include "pgn/read/pgn_read.h"
#include "tests/chess/fen_setter.h"

namespace {

constexpr const char* StartFen = "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq -";
constexpr const char* CastlingFen = "r3k2r/p1ppqpb1/bn2pnp1/3PN3/1p2P3/2N2Q1p/PPPBBPPP/R3K2R w KQkq -";
constexpr const char* CorpusPath = ORVAN_SOURCE_DIR "/../shared/corpus/selfplay.pgn";
// Enough positions for a steady figure without a long load.
constexpr size_t CorpusPositionLimit = 200000;

void Perft(benchmark::State& state, const char* fen)
{
    const sPosition root = PositionFromFen(fen);
    uint64_t nodes = 0;
    for (auto _ : state) {
        sPosition position = root;
        nodes += Perft(position, static_cast<int>(state.range(0)));
    }
    state.counters["nodes/s"] = benchmark::Counter(static_cast<double>(nodes), benchmark::Counter::kIsRate);
}
BENCHMARK_CAPTURE(Perft, start, StartFen)->Arg(4)->Arg(5)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Perft, castling, CastlingFen)->Arg(3)->Arg(4)->Unit(benchmark::kMillisecond);

struct PlayedMove {
    sPosition position;  // before the move
    uint32_t move;
};

int32_t CollectMainLine(PgnGame* game, int32_t, int32_t, intptr_t context)
{
    auto& moves = *reinterpret_cast<std::vector<PlayedMove>*>(context);
    sPosition position = *game->position;
    for (uint32_t i = 0; i < game->moveCount && moves.size() < CorpusPositionLimit; ++i) {
        moves.push_back({position, game->moves[i]});
        ApplyMove(&position, game->moves[i]);
    }
    return moves.size() < CorpusPositionLimit;
}

// The positions and moves of the main lines of the corpus games, read once.
const std::vector<PlayedMove>& CorpusMoves()
{
    static const std::vector<PlayedMove> moves = [] {
        std::vector<PlayedMove> collected;
        std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(CorpusPath, "rb"), &std::fclose);
        PgnGameStorage storage;
        if (file && storage.Allocated()) {
            PgnSource source;
            source.file = file.get();
            PgnReadGames(source, storage.Game(), 0, nullptr, &CollectMainLine,
                         reinterpret_cast<intptr_t>(&collected));
        }
        return collected;
    }();
    return moves;
}

bool SkipWithoutCorpus(benchmark::State& state)
{
    if (!CorpusMoves().empty())
        return false;
    state.SkipWithError("corpus selfplay.pgn not found next to the source tree");
    return true;
}

void MoveInfoAndText(benchmark::State& state)
{
    if (SkipWithoutCorpus(state))
        return;
    std::vector<PlayedMove> moves = CorpusMoves();
    char text[OV_MOVE_TEXT_SIZE];
    size_t described = 0;
    for (auto _ : state) {
        for (PlayedMove& played : moves) {
            const int32_t info = OvGetMoveInfo(&played.position, played.move);
            benchmark::DoNotOptimize(OvMoveToText(played.move, static_cast<uint32_t>(info), text,
                                                  OV_TEXT_PROMOTION_SIGN, nullptr));
        }
        described += moves.size();
    }
    state.counters["moves/s"] = benchmark::Counter(static_cast<double>(described), benchmark::Counter::kIsRate);
}
BENCHMARK(MoveInfoAndText)->Unit(benchmark::kMillisecond);

void MoveIsLegalOnGames(benchmark::State& state)
{
    if (SkipWithoutCorpus(state))
        return;
    std::vector<PlayedMove> moves = CorpusMoves();
    size_t tested = 0;
    for (auto _ : state) {
        for (PlayedMove& played : moves)
            benchmark::DoNotOptimize(MoveIsLegal(&played.position, played.move));
        tested += moves.size();
    }
    state.counters["moves/s"] = benchmark::Counter(static_cast<double>(tested), benchmark::Counter::kIsRate);
}
BENCHMARK(MoveIsLegalOnGames)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
