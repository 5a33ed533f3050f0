#include "game_range.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <string>

#include "cli_error.h"

namespace orvan_cli {

namespace {

[[noreturn]] void BadRange(std::string_view part, const std::string& why)
{
    throw CliError(kExitUsage, fmt::format("bad game range '{}': {}", part, why));
}

int32_t ReadNumber(std::string_view part, std::string_view digits, int32_t gameCount)
{
    int32_t number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (digits.empty() || error != std::errc() || end != digits.data() + digits.size())
        BadRange(part, fmt::format("'{}' is not a game number", digits));
    if (number < 1 || number > gameCount)
        BadRange(part, fmt::format("the file has games 1 to {}", gameCount));
    return number;
}

}  // namespace

std::vector<int32_t> ParseGameRange(std::string_view text, int32_t gameCount)
{
    std::vector<int32_t> numbers;
    if (text.empty())
        BadRange(text, "it is empty");
    size_t start = 0;
    while (start <= text.size()) {
        const size_t comma = std::min(text.find(',', start), text.size());
        const std::string_view part = text.substr(start, comma - start);
        const size_t dash = part.find('-');
        if (dash == std::string_view::npos) {
            numbers.push_back(ReadNumber(part, part, gameCount));
        } else {
            const int32_t first = ReadNumber(part, part.substr(0, dash), gameCount);
            const std::string_view lastText = part.substr(dash + 1);
            const int32_t last = lastText.empty() ? gameCount : ReadNumber(part, lastText, gameCount);
            if (last < first)
                BadRange(part, "it runs backwards");
            for (int32_t n = first; n <= last; ++n)
                numbers.push_back(n);
        }
        start = comma + 1;
    }
    return numbers;
}

}  // namespace orvan_cli
