// Progress of a long import: a bar redrawn in place on a terminal, plain
// lines now and then otherwise.
#ifndef ORVAN_CLI_PROGRESS_H
#define ORVAN_CLI_PROGRESS_H

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <string>

namespace orvan_cli {

class ImportProgress {
public:
    // `label` names the work (a file name); `expectedGames` is the count of
    // games the input seems to hold, 0 when unknown. Writes to `out`.
    ImportProgress(std::FILE* out, std::string label, int64_t expectedGames);

    // The count of games stored so far; redraws at most ten times a second on
    // a terminal and every five seconds elsewhere.
    void Update(int64_t stored);
    // The closing line: games stored, skipped, and games per second.
    void Finish(int64_t stored);

private:
    double GamesPerSecond(int64_t stored) const;
    void DrawBar(int64_t stored);

    using Clock = std::chrono::steady_clock;
    std::FILE* out_;
    std::string label_;
    int64_t expected_;
    bool terminal_;
    Clock::time_point start_;
    Clock::time_point lastDraw_;
};

}  // namespace orvan_cli

#endif
