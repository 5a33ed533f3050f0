// Writes every game of a PGN file (by default the largest corpus file) as PGN
// text: each game into a memory block of its own, as one PGN text is made
// from a game, and all games into one file. The games are read once before
// timing and kept as records; only the writing is timed. Counters: games per
// second and bytes of PGN text per second. A third benchmark times the move
// descriptions of the main lines alone, the chess core's share of the writing.
// Rates are per CPU second, so that a busy machine does not blur them.
// Usage: bench_pgn_write [benchmark flags] [file.pgn]
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "chess/move_notation.h"
#include "chess/tracked_position.h"
#include "pgn/pgn_game.h"
#include "pgn/read/pgn_read.h"
#include "pgn/write/game_writer.h"

namespace {

std::string BenchFile = ORVAN_SOURCE_DIR "/../shared/corpus/selfplay.pgn";

struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

// Every game of a file as a record of its own; the arrays behind the records
// are shared stores, each game holding only the entries it uses.
struct KeptGames {
    std::vector<PgnGame> games;
    std::vector<sPosition> positions;
    std::vector<PackedMove> moves;
    std::vector<uint16_t> nags;
    std::vector<uint32_t> commentIndex;
    std::vector<char> commentText;

    struct Places {
        size_t moves, annotations, commentText;
    };
    std::vector<Places> places;
};

int32_t KeepGame(PgnGame* game, int32_t, int32_t, intptr_t context)
{
    auto& kept = *reinterpret_cast<KeptGames*>(context);
    uint32_t end = game->treeCount != 0 ? game->treeCount : game->moveCount;
    kept.places.push_back({kept.moves.size(), kept.nags.size(), kept.commentText.size()});
    kept.games.push_back(*game);
    kept.positions.push_back(*game->position);
    kept.moves.insert(kept.moves.end(), game->moves, game->moves + end);
    kept.nags.insert(kept.nags.end(), game->nags, game->nags + end + 1);
    kept.commentIndex.insert(kept.commentIndex.end(), game->commentIndex,
                             game->commentIndex + end + 1);
    kept.commentText.insert(kept.commentText.end(), game->commentText,
                            game->commentText + game->commentUsed);
    return 1;
}

const KeptGames* LoadGames()
{
    static KeptGames* kept = [] {
        auto* games = new KeptGames;
        std::unique_ptr<std::FILE, FileCloser> file(std::fopen(BenchFile.c_str(), "rb"));
        if (!file)
            return games;
        PgnGameStorage storage;
        PgnReadGames(PgnSource{file.get(), nullptr, 0}, storage.Game(), 0, "NBRQK", &KeepGame,
                     reinterpret_cast<intptr_t>(games));
        for (size_t index = 0; index < games->games.size(); ++index) {
            PgnGame& game = games->games[index];
            const KeptGames::Places& at = games->places[index];
            game.position = &games->positions[index];
            game.moves = games->moves.data() + at.moves;
            game.nags = games->nags.data() + at.annotations;
            game.commentIndex = games->commentIndex.data() + at.annotations;
            game.commentText = games->commentText.data() + at.commentText;
        }
        return games;
    }();
    return kept;
}

// The kept games, or null with the benchmark skipped when there are none.
const KeptGames* GamesOrSkip(benchmark::State& state)
{
    const KeptGames* kept = LoadGames();
    if (!kept->games.empty())
        return kept;
    state.SkipWithError(("no games in " + BenchFile).c_str());
    return nullptr;
}

void Report(benchmark::State& state, size_t games, int64_t bytes)
{
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(games));
    state.SetBytesProcessed(state.iterations() * bytes);
    state.counters["games"] = static_cast<double>(games);
}

void BM_WriteEachGameToMemory(benchmark::State& state)
{
    const KeptGames* kept = GamesOrSkip(state);
    if (kept == nullptr)
        return;
    int64_t bytes = 0;
    for (auto _ : state) {
        bytes = 0;
        for (const PgnGame& game : kept->games) {
            PgnSink sink;
            PgnWriteGame(sink, game);
            bytes += static_cast<int64_t>(sink.MemoryTextUsed());
            GlobalFree(sink.TakeMemoryText());
        }
    }
    Report(state, kept->games.size(), bytes);
}
BENCHMARK(BM_WriteEachGameToMemory)->Unit(benchmark::kMillisecond);

void BM_WriteAllGamesToFile(benchmark::State& state)
{
    const KeptGames* kept = GamesOrSkip(state);
    if (kept == nullptr)
        return;
    int64_t bytes = 0;
    for (auto _ : state) {
        std::unique_ptr<std::FILE, FileCloser> file(std::tmpfile());
        {
            PgnSink sink(file.get());
            for (const PgnGame& game : kept->games)
                PgnWriteGame(sink, game);
        }
        std::fflush(file.get());
        bytes = std::ftell(file.get());
    }
    Report(state, kept->games.size(), bytes);
}
BENCHMARK(BM_WriteAllGamesToFile)->Unit(benchmark::kMillisecond);

// The move descriptions alone, as the movetext writer makes them for the main
// line of every game: the share of the chess core in the two figures above.
void BM_MainLineMoveTextsOnly(benchmark::State& state)
{
    const KeptGames* kept = GamesOrSkip(state);
    if (kept == nullptr)
        return;
    int64_t characters = 0;
    for (auto _ : state) {
        characters = 0;
        for (const PgnGame& game : kept->games) {
            TrackedPosition position;
            TrackPosition(position, *game.position);
            for (uint32_t entry = 0; entry < game.moveCount; ++entry) {
                uint32_t move = game.moves[entry] & ~uint32_t{MoveBranch | MoveLineEnd};
                uint32_t info = static_cast<uint32_t>(DescribeTrackedMove(position, move, StalemateMarked(&DefaultNotation)));
                char text[OV_MOVE_TEXT_SIZE];
                characters += OvMoveToText(move, info, text, PgnMoveTextMode, &DefaultNotation);
            }
        }
    }
    Report(state, kept->games.size(), characters);
}
BENCHMARK(BM_MainLineMoveTextsOnly)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    if (argc > 1)
        BenchFile = argv[1];
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
