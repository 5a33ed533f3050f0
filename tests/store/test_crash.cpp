// A process killed in the middle of a bulk write loses only the games of that
// unfinished bulk operation.
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include "tests/store/game_samples.h"

namespace {

constexpr int32_t BulkGames = 1500;  // more than a chunk, so that chunks are written
constexpr int32_t SingleGames = 5;

// The child: two finished bulk operations, single writes, then a bulk
// operation that reports its progress and runs until it is killed.
[[noreturn]] void WriteUntilKilled(const std::string& path, int ready)
{
    const uint32_t file = OvgOpenGamefile(path.c_str(), 1);
    const uint32_t game = IGGameOpenGame();
    const auto write = [&](int32_t number) {
        WriteSample(game, size_t(number), number);
        return OvgWriteGame(game, file, 0, nullptr);
    };
    int32_t number = 0;
    for (int bulk = 0; bulk < 2; ++bulk) {
        OvgFileAction(file, 2);
        for (int32_t i = 0; i < BulkGames; ++i)
            number = write(number + 1);
        OvgFileAction(file, 0);
    }
    for (int32_t i = 0; i < SingleGames; ++i)
        number = write(number + 1);
    OvgFileAction(file, 2);
    for (int32_t i = 0;; ++i) {
        number = write(number + 1);
        if (i == 2 * BulkGames && ::write(ready, "1", 1) != 1)
            _exit(2);
    }
}

TEST(Crash, KillDuringABulkWriteKeepsEveryFinishedOperation)
{
    TempDir dir;
    const std::string path = dir.File("crash.ovg");
    int pipeEnds[2];
    ASSERT_EQ(pipe(pipeEnds), 0);
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        close(pipeEnds[0]);
        WriteUntilKilled(path, pipeEnds[1]);
    }
    close(pipeEnds[1]);
    char byte = 0;
    ASSERT_EQ(read(pipeEnds[0], &byte, 1), 1) << "the child died before its third bulk operation";
    close(pipeEnds[0]);
    ASSERT_EQ(kill(child, SIGKILL), 0);
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status));

    FileHandle file(path, 0);
    ASSERT_NE(file.id, 0u) << "the file opens after the crash";
    const int32_t expected = 2 * BulkGames + SingleGames;
    ASSERT_EQ(OvgGetNumberOfGames(file), expected);
    GameHandle game;
    for (int32_t number = 1; number <= expected; ++number) {
        ASSERT_EQ(OvgLoadGame(game, file, number, 0), 1) << number;
        ASSERT_EQ(IGGameGetRound(game), number);
        ASSERT_EQ(MainLine(game), SampleLines()[size_t(number) % SampleLines().size()]);
    }
    // The file goes on taking games behind the survivors.
    WriteSample(game, 0, expected + 1);
    EXPECT_EQ(OvgWriteGame(game, file, 0, nullptr), expected + 1);
}

}  // namespace
