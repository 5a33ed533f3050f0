#include "progress.h"

#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>

namespace orvan_cli {

namespace {

constexpr int kBarWidth = 30;
constexpr auto kTerminalInterval = std::chrono::milliseconds(100);
constexpr auto kPlainInterval = std::chrono::seconds(5);

}  // namespace

ImportProgress::ImportProgress(std::FILE* out, std::string label, int64_t expectedGames)
    : out_(out),
      label_(std::move(label)),
      expected_(expectedGames),
      terminal_(isatty(fileno(out)) != 0),
      start_(Clock::now()),
      lastDraw_(start_)
{
}

double ImportProgress::GamesPerSecond(int64_t stored) const
{
    const double seconds = std::chrono::duration<double>(Clock::now() - start_).count();
    return seconds > 0 ? static_cast<double>(stored) / seconds : 0.0;
}

void ImportProgress::DrawBar(int64_t stored)
{
    const double part = expected_ > 0 ? std::min(1.0, static_cast<double>(stored) / expected_) : 0.0;
    const int filled = static_cast<int>(part * kBarWidth);
    fmt::print(out_, "\r{} [{}{}] {:3.0f}%  {} stored  {:.0f} games/s\x1b[K", label_,
               std::string(filled, '#'), std::string(kBarWidth - filled, '.'), part * 100, stored,
               GamesPerSecond(stored));
    std::fflush(out_);
}

void ImportProgress::Update(int64_t stored)
{
    const auto now = Clock::now();
    if (now - lastDraw_ < (terminal_ ? Clock::duration(kTerminalInterval) : Clock::duration(kPlainInterval)))
        return;
    lastDraw_ = now;
    if (terminal_)
        DrawBar(stored);
    else
        fmt::print(out_, "{}: {} games stored so far\n", label_, stored);
}

void ImportProgress::Finish(int64_t stored)
{
    const int64_t skipped = std::max<int64_t>(0, expected_ - stored);
    if (terminal_)
        fmt::print(out_, "\r\x1b[K");
    fmt::print(out_, "{}: {} games stored, {} skipped, {:.0f} games/s\n", label_, stored, skipped,
               GamesPerSecond(stored));
    std::fflush(out_);
}

}  // namespace orvan_cli
