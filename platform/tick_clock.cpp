#include "platform/tick_clock.h"

#include <atomic>
#include <chrono>

namespace {

uint32_t MonotonicTicks()
{
    auto now = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<uint32_t>(std::chrono::duration_cast<std::chrono::milliseconds>(now).count());
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
