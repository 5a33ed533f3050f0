// Arbitrary bytes as a game file: opened, counted, and its first games read,
// walked and their headers delivered. With ORVAN_FUZZ_MAKE_SEED set to a path
// the program writes a small valid game file there and stops, so that the
// fuzzer can start from the store's real layout.
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "orvan.h"

namespace {

constexpr char SeedGames[] =
    "[White \"Anna\"]\n[Black \"Ben\"]\n[Result \"1-0\"]\n\n"
    "1. e4 {open} e5 (1... c5 2. Nf3) 2. Nf3 $1 Nc6 3. Bb5 a6 1-0\n\n"
    "[White \"Cleo\"]\n[Black \"Dan\"]\n[SetUp \"1\"]\n[FEN \"4k3/P7/8/8/8/8/8/4K3 w - - 0 1\"]\n\n"
    "1. a8=Q+ Kd7 *\n";

void MakeSeed(const char* path)
{
    const std::string pgn = std::string(path) + ".pgn";
    if (FILE* out = std::fopen(pgn.c_str(), "w")) {
        std::fputs(SeedGames, out);
        std::fclose(out);
    }
    const OvGameFile file = OvCreateGamefile(path);
    OvPgnImport(pgn.c_str(), file, 0, nullptr, nullptr, 0);
    OvCloseGamefile(file);
    std::remove(pgn.c_str());
}

const std::string& ScratchPath()
{
    static const std::string path = "/tmp/orvan-fuzz-gamefile-" + std::to_string(getpid()) + ".ovg";
    return path;
}

void RemoveScratch()
{
    for (const char* suffix : {"", "-journal", "-wal", "-shm"})
        std::remove((ScratchPath() + suffix).c_str());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (const char* seed = std::getenv("ORVAN_FUZZ_MAKE_SEED")) {
        // The seed is closed and complete; _exit keeps the fuzzer from
        // taking the exit for a crash.
        MakeSeed(seed);
        _exit(0);
    }
    static const OvGameBuffer game = OvAllocGameBuffer();
    RemoveScratch();
    if (FILE* out = std::fopen(ScratchPath().c_str(), "wb")) {
        std::fwrite(data, 1, size, out);
        std::fclose(out);
    }
    if (const OvGameFile file = OvOpenGamefile(ScratchPath().c_str())) {
        const int32_t count = OvGetGamesCount(file);
        for (int32_t number = 1; number <= count && number <= 4; ++number) {
            if (OvReadGame(game, file, number) == 0)
                continue;
            char text[64];
            for (int32_t field = HdrPlace; field <= HdrResultShort; ++field)
                OvGetHeaderInfo(game, field, text, sizeof text);
            OvGotoMove(game, PGN_MAX_MOVES);
            OvGotoMove(game, 0);
            if (HGLOBAL pgn = OvCreatePgnGame(game, 0))
                GlobalFree(pgn);
        }
        OvCloseGamefile(file);
    }
    RemoveScratch();
    return 0;
}
