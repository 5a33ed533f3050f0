#include "ovgame/pattern_statistics.h"

namespace ovg {
thread_local OvgPatternStatistics PatternStatistics __attribute__((tls_model("initial-exec"))) = {0, 0};
}

OvgPatternStatistics OvgGetPatternStatistics(int32_t reset)
{
    const OvgPatternStatistics counts = ovg::PatternStatistics;
    if (reset != 0)
        ovg::PatternStatistics = {0, 0};
    return counts;
}
