// A game file on a small tmpfs, mounted in a private mount namespace of a child
// process (skipped where mounting is not permitted): bulk imports run until the
// disk is full, and the file then holds the games of every finished bulk
// operation and nothing else.
#include <sched.h>
#include <sys/mount.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>

#include <gtest/gtest.h>

#include "hardening/generated_games.h"
#include "orvan.h"
#include "support/capture.h"

namespace {

constexpr int32_t BulkSize = 25;
constexpr int32_t BulkCount = 400;
constexpr const char* TmpfsSize = "size=256k";
constexpr const char* SkipMark = "skip: ";

// Runs `work` in a child process with a tmpfs mounted on `directory` in a
// mount namespace of its own, so that the mount goes with the child. Returns
// what `work` answered through the file `answer` (empty when all was well),
// SkipMark and the reason when the mount was refused, or how the child ended.
std::string RunOnSmallTmpfs(const std::string& directory, const std::string& answer,
                            const std::function<std::string()>& work)
{
    const pid_t child = fork();
    if (child == 0) {
        if (unshare(CLONE_NEWNS) != 0 || mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
            mount("orvan-full", directory.c_str(), "tmpfs", 0, TmpfsSize) != 0)
            std::ofstream(answer) << SkipMark << "cannot mount a tmpfs here (" << std::strerror(errno)
                                  << "); needs root or CAP_SYS_ADMIN";
        else
            std::ofstream(answer) << work();
        _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    std::ifstream answered(answer);
    if (WIFSIGNALED(status) || !answered)
        return "child ended without an answer, status " + std::to_string(status);
    return std::string(std::istreambuf_iterator<char>(answered), {});
}

// The game file at `path` holds exactly games 1 .. `count`, in order; empty
// when it does, else what differs.
std::string HoldsFirstGames(const std::string& path, int32_t count)
{
    const OvGameFile file = OvOpenGamefile(path.c_str());
    if (file == 0)
        return "the game file does not reopen";
    const int32_t stored = OvGetGamesCount(file);
    const std::string fault = stored != count ? "the game file holds " + std::to_string(stored) + " games"
                                              : CompareWithGenerated(file, stored);
    OvCloseGamefile(file);
    return fault;
}

TEST(FullTmpfs, ImportsStopAtTheFullDiskAndKeepEveryFinishedBulkOperation)
{
#if defined(__SANITIZE_THREAD__)
    GTEST_SKIP() << "fork of a child is not supported under ThreadSanitizer";
#endif
    const ScratchDirectory scratch("orvan-full-tmpfs");
    const BoxCapture boxes;
    const auto chunk = [&](int32_t bulk) { return scratch.File("chunk" + std::to_string(bulk) + ".pgn"); };
    for (int32_t bulk = 0; bulk < BulkCount; ++bulk)
        WriteGeneratedGames(chunk(bulk), bulk * BulkSize + 1, BulkSize);
    const std::string mountPoint = scratch.File("mount"), path = mountPoint + "/games.ovg";
    std::filesystem::create_directory(mountPoint);
    const std::string answer = RunOnSmallTmpfs(mountPoint, scratch.File("answer"), [&]() -> std::string {
        const OvGameFile file = OvCreateGamefile(path.c_str());
        if (file == 0)
            return "no game file on the tmpfs";
        // One bulk operation per chunk, until one does not land whole: its
        // games wait in memory, so the failure shows at its end, as a count
        // that did not grow.
        int32_t finished = 0;
        for (; finished < BulkCount; ++finished) {
            OvStartBulkOperation(file, OV_BULK_WRITE);
            const int32_t result = OvPgnImport(chunk(finished).c_str(), file, 0, nullptr, nullptr, 0);
            OvEndBulkOperation(file);
            if (result != 0)
                return "the import answered " + std::to_string(result);
            const int32_t count = OvGetGamesCount(file);
            if (count != (finished + 1) * BulkSize) {
                if (count != finished * BulkSize)
                    return "a failed bulk operation left " + std::to_string(count) + " games";
                break;
            }
        }
        if (finished == BulkCount || finished == 0)
            return "the disk filled after " + std::to_string(finished) + " bulk operations; change the tmpfs size";
        OvCloseGamefile(file);
        const std::string fault = HoldsFirstGames(path, finished * BulkSize);
        return fault.empty() ? "" : "after " + std::to_string(finished) + " finished bulk operations: " + fault;
    });
    if (answer.rfind(SkipMark, 0) == 0)
        GTEST_SKIP() << answer;
    EXPECT_EQ(answer, "");
}

}  // namespace
