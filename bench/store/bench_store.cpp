// Throughput of the game store on real games: writing inside one bulk
// operation, header batches (OvgReadGames + GetGameHeader), whole-game
// batches (OvgReadGames + UnpackGame mode 0) and the exact position test
// (mode 2), each measured in CPU time. The games come from a PGN file (by default the self-play corpus)
// through the library's PGN reader and the store's own move test; the
// counters show stored and PGN bytes per game.
// Usage: bench_store [benchmark flags] [file.pgn]
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <time.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "pgn/pgn_game.h"
#include "pgn/read/pgn_read.h"
#include "siblings/game_driver.h"

namespace {

std::string PgnPath = ORVAN_SOURCE_DIR "/../shared/corpus/selfplay.pgn";
constexpr int32_t BatchBytes = 65536;
constexpr int32_t BatchGames = 100;

struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

// Driver piece code of an sPosition code.
uint8_t DriverCode(uint8_t code)
{
    const int kind = code & 7;
    if (kind < 1 || kind > 6)
        return DrvEmpty;
    return uint8_t(((code & 8) ? 8 : 16) + kind - 1);
}

void PutStartPosition(uint32_t game, const PgnGame& pgn)
{
    const sPosition& pos = *pgn.position;
    BoardRecord board{};
    IGNewBoard(&board);
    for (int sq = 0; sq < 64; ++sq)
        board.squares[BoardIndex(sq & 7, sq >> 3)] = DriverCode(pos.board[sq]);
    const int32_t castling = (pos.castleWhiteShort ? DrvCastleWhiteShort : 0) |
                             (pos.castleWhiteLong ? DrvCastleWhiteLong : 0) |
                             (pos.castleBlackShort ? DrvCastleBlackShort : 0) |
                             (pos.castleBlackLong ? DrvCastleBlackLong : 0);
    const int32_t ep = pos.epSquare < 64 ? (pos.epSquare & 7) + 1 : 0;
    const int32_t ply = int32_t(2 * pgn.firstMoveNumber) + (pos.sideToMove ? 1 : 2);
    BoardToInitialPosition(game, &board, castling & CastlingRights(&board), ep, ply);
}

// The header and the main line of a PGN record into the game buffer, each
// move through the store's own legality test.
void BuildMainLine(uint32_t game, const PgnGame& pgn)
{
    NewGameErase(game);
    const auto tag = [&](PgnTagNumber n) { return pgn.tags[n - 1]; };
    IGGamePutPlace(game, tag(TagEvent));
    IGGamePutSite(game, tag(TagSite));
    IGGamePutPlayer(game, 0, tag(TagWhite));
    IGGamePutPlayer(game, 1, tag(TagBlack));
    IGGamePutTitle(game, 0, tag(TagWhiteTitle));
    IGGamePutTitle(game, 1, tag(TagBlackTitle));
    IGGamePutCountry(game, 0, tag(TagWhiteCountry));
    IGGamePutCountry(game, 1, tag(TagBlackCountry));
    IGGamePutKeycode(game, tag(TagEco));
    IGGamePutRound(game, std::atoi(tag(TagRound)));
    IGGamePutElo(game, 0, std::atoi(tag(TagWhiteElo)));
    IGGamePutElo(game, 1, std::atoi(tag(TagBlackElo)));
    const char* date = tag(TagDate);
    const int32_t triple[3] = {std::atoi(date), date[0] ? std::atoi(date + 5) : 0, date[0] ? std::atoi(date + 8) : 0};
    IGGamePutDate(game, triple);
    constexpr int32_t DriverResult[4] = {0, 1, 3, 2};
    if (pgn.resultToken >= 0 && pgn.resultToken <= 3)
        IGGamePutResult(game, DriverResult[pgn.resultToken], 0);
    PutStartPosition(game, pgn);
    constexpr int32_t Promotion[2][4] = {{20, 19, 18, 17}, {12, 11, 10, 9}};
    for (uint32_t i = 0; i < pgn.moveCount; ++i) {
        const uint32_t m = pgn.moves[i];
        MoveXY xy{int32_t(m & 7) + 1, int32_t((m >> 3) & 7) + 1, int32_t((m >> 8) & 7) + 1,
                  int32_t((m >> 11) & 7) + 1, 0};
        if (LegalMove(game, &xy) == 0)
            break;
        if (xy.promotion != 0)
            xy.promotion = Promotion[xy.promotion == DrvWhiteQueen][(m >> 14) & 3];
        AcceptMove(game, &xy);
    }
}

struct Corpus {
    std::string directory;
    std::string storePath;
    int64_t games = 0;
    int64_t pgnBytes = 0;
    int64_t storeBytes = 0;
    bool ready = false;
};

struct ImportContext {
    uint32_t game;
    uint32_t file;
    int64_t stored;
};

int32_t StoreGame(PgnGame* pgn, int32_t, int32_t, intptr_t context)
{
    auto* import = reinterpret_cast<ImportContext*>(context);
    BuildMainLine(import->game, *pgn);
    import->stored += OvgWriteGame(import->game, import->file, 0, nullptr) != 0;
    return 1;
}

// Reads the PGN file once into a store file that all benchmarks share.
Corpus& TheCorpus()
{
    static Corpus corpus = [] {
        Corpus c;
        std::unique_ptr<std::FILE, FileCloser> pgn(std::fopen(PgnPath.c_str(), "rb"));
        if (!pgn)
            return c;
        char pattern[] = "/tmp/bench-store-XXXXXX";
        c.directory = mkdtemp(pattern);
        c.storePath = c.directory + "/corpus.ovg";
        PgnGameStorage storage;
        ImportContext import{IGGameOpenGame(), OvgOpenGamefile(c.storePath.c_str(), 1), 0};
        OvgFileAction(import.file, 2);
        PgnSource source;
        source.file = pgn.get();
        PgnReadGames(source, storage.Game(), 0, "NBRQK", &StoreGame, reinterpret_cast<intptr_t>(&import));
        OvgFileAction(import.file, 0);
        c.games = OvgGetNumberOfGames(import.file);
        OvgCloseGamefile(import.file);
        IGGameCloseGame(import.game);
        c.pgnBytes = int64_t(std::filesystem::file_size(PgnPath));
        c.storeBytes = int64_t(std::filesystem::file_size(c.storePath));
        c.ready = c.games > 0;
        return c;
    }();
    return corpus;
}

void RemoveCorpus()
{
    if (!TheCorpus().directory.empty())
        std::filesystem::remove_all(TheCorpus().directory);
}

bool NeedCorpus(benchmark::State& state)
{
    if (TheCorpus().ready)
        return true;
    state.SkipWithError(("no games from " + PgnPath).c_str());
    return false;
}

void SizeCounters(benchmark::State& state)
{
    const Corpus& c = TheCorpus();
    state.counters["games"] = double(c.games);
    state.counters["store_bytes_per_game"] = double(c.storeBytes) / double(c.games);
    state.counters["pgn_bytes_per_game"] = double(c.pgnBytes) / double(c.games);
    state.counters["store_share_of_pgn"] = double(c.storeBytes) / double(c.pgnBytes);
}

// Runs `perGame(game, packed)` over every game of the corpus file in batches.
template <class PerGame>
int64_t ForEachPacked(uint32_t file, uint32_t game, std::vector<uint8_t>& buffer, std::vector<uint32_t>& places,
                      PerGame perGame)
{
    int64_t seen = 0;
    for (int32_t first = 0;;) {
        const int32_t n = OvgReadGames(file, first, buffer.data(), places.data(), BatchBytes, BatchGames);
        if (n <= 0)
            break;
        for (int32_t k = 0; k < n; ++k)
            perGame(game, buffer.data() + places[k] - places[0]);
        first += n;
        seen += n;
    }
    return seen;
}

// CPU time of this thread, so that other work on a shared machine does not
// count; the writes' system calls count.
double ThreadSeconds()
{
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return double(now.tv_sec) + double(now.tv_nsec) * 1e-9;
}

void BM_WriteInBulk(benchmark::State& state)
{
    if (!NeedCorpus(state))
        return;
    const Corpus& c = TheCorpus();
    const uint32_t source = OvgOpenGamefile(c.storePath.c_str(), 0);
    const std::string target = c.directory + "/written.ovg";
    // Games wait in a row of buffers, so that only the writes are timed.
    std::vector<uint32_t> games(512);
    for (uint32_t& game : games)
        game = IGGameOpenGame();
    std::vector<uint8_t> buffer(BatchBytes);
    std::vector<uint32_t> places(BatchGames + 1);
    int64_t written = 0;
    for (auto _ : state) {
        const uint32_t file = OvgOpenGamefile(target.c_str(), 1);
        double spent = 0;
        size_t waiting = 0;
        const auto writeWaiting = [&] {
            const double start = ThreadSeconds();
            for (size_t i = 0; i < waiting; ++i)
                written += OvgWriteGame(games[i], file, 0, nullptr) != 0;
            spent += ThreadSeconds() - start;
            waiting = 0;
        };
        double start = ThreadSeconds();
        OvgFileAction(file, 2);
        spent += ThreadSeconds() - start;
        ForEachPacked(source, 0, buffer, places, [&](uint32_t, const uint8_t* packed) {
            UnpackGame(games[waiting++], packed, 0);
            if (waiting == games.size())
                writeWaiting();
        });
        writeWaiting();
        start = ThreadSeconds();
        OvgFileAction(file, 0);
        spent += ThreadSeconds() - start;
        state.SetIterationTime(spent);
        OvgCloseGamefile(file);
    }
    state.SetItemsProcessed(written);
    SizeCounters(state);
    for (uint32_t game : games)
        IGGameCloseGame(game);
    OvgCloseGamefile(source);
}
BENCHMARK(BM_WriteInBulk)->Unit(benchmark::kMillisecond)->UseManualTime();

template <class PerGame>
void ReadBatches(benchmark::State& state, PerGame perGame)
{
    if (!NeedCorpus(state))
        return;
    const uint32_t file = OvgOpenGamefile(TheCorpus().storePath.c_str(), 0);
    const uint32_t game = IGGameOpenGame();
    std::vector<uint8_t> buffer(BatchBytes);
    std::vector<uint32_t> places(BatchGames + 1);
    int64_t read = 0;
    for (auto _ : state) {
        OvgFileAction(file, 1);
        read += ForEachPacked(file, game, buffer, places, perGame);
        OvgFileAction(file, 0);
    }
    state.SetItemsProcessed(read);
    SizeCounters(state);
    IGGameCloseGame(game);
    OvgCloseGamefile(file);
}

void BM_ReadHeaders(benchmark::State& state)
{
    ReadBatches(state, [](uint32_t game, const uint8_t* packed) {
        benchmark::DoNotOptimize(GetGameHeader(game, packed, 0, 1));
    });
}
BENCHMARK(BM_ReadHeaders)->Unit(benchmark::kMillisecond);

void BM_ReadWholeGames(benchmark::State& state)
{
    ReadBatches(state, [](uint32_t game, const uint8_t* packed) {
        benchmark::DoNotOptimize(UnpackGame(game, packed, 0));
    });
}
BENCHMARK(BM_ReadWholeGames)->Unit(benchmark::kMillisecond);

// The position after 1. e4 e5 2. Nf3 Nc6 3. Bb5, tested against every game.
void BM_ExactPosition(benchmark::State& state)
{
    static uint32_t pattern = [] {
        const uint32_t game = IGGameOpenGame();
        NewGameErase(game);
        for (const MoveXY& move : {MoveXY{5, 2, 5, 4, 0}, MoveXY{5, 7, 5, 5, 0}, MoveXY{7, 1, 6, 3, 0},
                                   MoveXY{2, 8, 3, 6, 0}, MoveXY{6, 1, 2, 5, 0}})
            AcceptMove(game, &move);
        PatExactPosition(game);
        return game;
    }();
    int64_t hits = 0;
    ReadBatches(state, [&](uint32_t, const uint8_t* packed) { hits += UnpackGame(pattern, packed, 2) > 0; });
    state.counters["hits"] = double(hits) / double(state.iterations());
}
BENCHMARK(BM_ExactPosition)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    if (argc > 1)
        PgnPath = argv[1];
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    RemoveCorpus();
    return 0;
}
