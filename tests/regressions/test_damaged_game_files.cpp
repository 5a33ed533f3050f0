// Damaged game files the fuzzer found: each is opened and its games read,
// walked and written as PGN, as the fuzz target does; none may crash.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include <unistd.h>

#include "orvan.h"

namespace {

namespace fs = std::filesystem;

// Reads every game of the file at `path` and writes it as PGN; the number of
// games that loaded.
int32_t ReadEveryGame(const fs::path& path)
{
    const OvGameBuffer game = OvAllocGameBuffer();
    int32_t loaded = 0;
    if (const OvGameFile file = OvOpenGamefile(path.c_str())) {
        for (int32_t number = 1; number <= OvGetGamesCount(file); ++number) {
            if (OvReadGame(game, file, number) == 0)
                continue;
            ++loaded;
            OvGotoMove(game, PGN_MAX_MOVES);
            if (HGLOBAL pgn = OvCreatePgnGame(game, 0))
                GlobalFree(pgn);
        }
        OvCloseGamefile(file);
    }
    OvFreeGameBuffer(game);
    return loaded;
}

// A long comment whose stored line count exceeds the lines its text holds
// made the comment reader run past the text.
TEST(DamagedGameFiles, LongCommentWithMoreLinesThanItsTextHolds)
{
    const fs::path input = fs::path(ORVAN_SOURCE_DIR) / "tests/regressions/inputs/long-comment-line-count.ovg";
    const fs::path copy = fs::temp_directory_path() / ("orvan-regression-" + std::to_string(::getpid()) + ".ovg");
    fs::copy_file(input, copy, fs::copy_options::overwrite_existing);
    EXPECT_EQ(ReadEveryGame(copy), 1) << "the damaged first game is refused, the second loads";
    for (const char* suffix : {"", "-wal", "-shm", "-journal"})
        fs::remove(copy.string() + suffix);
}

}  // namespace
