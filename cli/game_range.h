// Game numbers named on the command line: "7", "1-10", "3,5,9-12", "20-"
// (to the last game).
#ifndef ORVAN_CLI_GAME_RANGE_H
#define ORVAN_CLI_GAME_RANGE_H

#include <cstdint>
#include <string_view>
#include <vector>

namespace orvan_cli {

// The numbers `text` names, in the order given, each checked against
// 1..gameCount. Throws CliError (usage) naming the bad part.
std::vector<int32_t> ParseGameRange(std::string_view text, int32_t gameCount);

}  // namespace orvan_cli

#endif
