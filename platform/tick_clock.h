// A millisecond tick count that wraps at 2^32, like the system tick count of
// the original platform. Tests replace the source to drive time by hand.
#ifndef ORVAN_PLATFORM_TICK_CLOCK_H
#define ORVAN_PLATFORM_TICK_CLOCK_H

#include <cstdint>

using TickSource = uint32_t (*)();

// Milliseconds since an arbitrary start, modulo 2^32.
uint32_t TickCount();

// Replaces the clock; null restores the monotonic system clock.
void SetTickSource(TickSource source);

#endif
