#include "platform/tick_clock.h"

#include <time.h>

#include <atomic>

namespace {

// The coarse monotonic clock: a few milliseconds of resolution, far finer than
// the progress intervals it serves, at a fraction of the precise clock's cost
// (the searches read it once per game).
uint32_t MonotonicTicks()
{
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC_COARSE, &now);
    return static_cast<uint32_t>(static_cast<uint64_t>(now.tv_sec) * 1000u + static_cast<uint64_t>(now.tv_nsec) / 1000000u);
}

std::atomic<TickSource> currentSource{&MonotonicTicks};

}  // namespace

uint32_t TickCount()
{
    return currentSource.load(std::memory_order_relaxed)();
}

void SetTickSource(TickSource source)
{
    currentSource.store(source != nullptr ? source : &MonotonicTicks, std::memory_order_relaxed);
}
