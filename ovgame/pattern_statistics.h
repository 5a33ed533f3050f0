// Counts of the exact position test (UnpackGame mode 2) made on the calling
// thread, for benchmarks: the games tested, and those the game signature
// rejected without a move replayed. Per thread and without atomics, so that
// counting costs the test nothing measurable.
#ifndef OVGAME_PATTERN_STATISTICS_H
#define OVGAME_PATTERN_STATISTICS_H

#include <cstdint>

#include "siblings/game_driver.h"

struct OvgPatternStatistics {
    int64_t tested;
    int64_t rejectedBySignature;
};

namespace ovg {
extern thread_local OvgPatternStatistics PatternStatistics __attribute__((tls_model("initial-exec")));
}

// The counts of the calling thread since its start or the last reset; `reset`
// non-zero sets them to 0 after reading.
extern "C" OVGAME_API OvgPatternStatistics OvgGetPatternStatistics(int32_t reset);

#endif
