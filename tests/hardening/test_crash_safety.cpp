// An import killed with SIGKILL at many points: each time the game file opens
// and holds exactly the games of the bulk operations that had finished (or,
// when the kill fell between the commit and its report, one more), in the
// order of the PGN text.
#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <thread>

#include <gtest/gtest.h>

#include "hardening/generated_games.h"
#include "orvan.h"

namespace {

constexpr int32_t BulkSize = 12;
constexpr int32_t BulkCount = 8;
constexpr int32_t GameCount = BulkSize * BulkCount;  // a kill inside the progress call of each
static_assert(GameCount >= 50, "kill at 50 points at least");

int32_t progressCalls = 0;
int32_t killAtCall = 0;

int32_t KillingProgress(uint32_t, intptr_t) { return ++progressCalls == killAtCall ? raise(SIGKILL) : 1; }

class CrashSafety : public ::testing::Test {
protected:
    CrashSafety() : scratch_("orvan-crash")
    {
        for (int32_t bulk = 0; bulk < BulkCount; ++bulk)
            WriteGeneratedGames(ChunkPath(bulk), bulk * BulkSize + 1, BulkSize);
    }

    std::string ChunkPath(int32_t bulk) const { return scratch_.File("chunk" + std::to_string(bulk) + ".pgn"); }
    std::string GameFilePath() const { return scratch_.File("games.ovg"); }

    // Runs one child to its end, or to its kill: at progress call `killAt`
    // (0: none), or after `delay` from the parent. Returns the number of
    // bulk operations the child reported finished.
    int32_t RunImport(int32_t killAt, std::chrono::microseconds delay, bool& killed)
    {
        std::filesystem::remove(GameFilePath());
        const OvGameFile created = OvCreateGamefile(GameFilePath().c_str());
        EXPECT_NE(created, 0u);
        OvCloseGamefile(created);
        int pipeEnds[2];
        EXPECT_EQ(pipe(pipeEnds), 0);
        const pid_t child = fork();
        if (child == 0) {
            // Imports the chunks, one bulk operation each, and reports each
            // finished one with a byte on the pipe.
            close(pipeEnds[0]);
            progressCalls = 0;
            killAtCall = killAt;
            const OvGameFile file = OvOpenGamefile(GameFilePath().c_str());
            const char done = 1;
            for (int32_t bulk = 0; bulk < BulkCount && file != 0; ++bulk) {
                OvStartBulkOperation(file, OV_BULK_WRITE);
                OvPgnImport(ChunkPath(bulk).c_str(), file, 0, nullptr, KillingProgress, 0);
                OvEndBulkOperation(file);
                if (write(pipeEnds[1], &done, 1) != 1)
                    _exit(3);
            }
            _exit(file != 0 ? 0 : 2);
        }
        close(pipeEnds[1]);
        if (delay.count() > 0) {
            std::this_thread::sleep_for(delay);
            kill(child, SIGKILL);
        }
        int status = 0;
        waitpid(child, &status, 0);
        killed = WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL;
        EXPECT_TRUE(killed || (WIFEXITED(status) && WEXITSTATUS(status) == 0)) << "child status " << status;
        int32_t reported = 0;
        char byte;
        while (read(pipeEnds[0], &byte, 1) == 1)
            ++reported;
        close(pipeEnds[0]);
        return reported;
    }

    // The game file holds whole bulk operations only, between `least` and
    // `most` of them, with the games in PGN order. Returns the bulk count.
    int32_t ExpectWholeBulks(int32_t least, int32_t most, const std::string& point)
    {
        const OvGameFile file = OvOpenGamefile(GameFilePath().c_str());
        EXPECT_NE(file, 0u) << point;
        const int32_t count = OvGetGamesCount(file);
        EXPECT_EQ(count % BulkSize, 0) << point << ": " << count << " games";
        EXPECT_GE(count / BulkSize, least) << point;
        EXPECT_LE(count / BulkSize, most) << point;
        EXPECT_EQ(CompareWithGenerated(file, count), "") << point;
        OvCloseGamefile(file);
        return count / BulkSize;
    }

    ScratchDirectory scratch_;
};

TEST_F(CrashSafety, KilledImportKeepsEveryFinishedBulkOperationAndNothingElse)
{
#if defined(__SANITIZE_THREAD__)
    GTEST_SKIP() << "fork and kill of a child is not supported under ThreadSanitizer";
#endif
    bool killed = false;
    const auto start = std::chrono::steady_clock::now();
    ASSERT_EQ(RunImport(0, {}, killed), BulkCount);
    const auto fullRun = std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() - start);
    ASSERT_FALSE(killed);
    ASSERT_EQ(ExpectWholeBulks(BulkCount, BulkCount, "full run"), BulkCount);

    // Kills inside the progress call of a chosen game: the bulk operation of
    // that game is lost, every earlier one is kept.
    for (int32_t call = 1; call <= GameCount; ++call) {
        const std::string point = "kill at progress call " + std::to_string(call);
        RunImport(call, {}, killed);
        ASSERT_TRUE(killed) << point;
        ExpectWholeBulks((call - 1) / BulkSize, (call - 1) / BulkSize, point);
    }
    // Kills from outside after delays spread over the length of a full run
    // (which also counts the parent's set-up, so the last steps may come late).
    for (int32_t step = 1; step <= 24; ++step) {
        const auto delay = fullRun * step / 30;
        const std::string point = "kill after " + std::to_string(delay.count()) + " us";
        const int32_t reported = RunImport(0, delay, killed);
        ExpectWholeBulks(reported, killed ? reported + 1 : reported, point);
    }
}

}  // namespace
