#ifndef ORVAN_FRAME_COPY_BOUNDED_H
#define ORVAN_FRAME_COPY_BOUNDED_H

#include <cstdint>

// Copies `src` to `dest`, stopping at the terminator or after size - 1
// characters, then terminates `dest` when size is above 0. Size 0 (or below)
// writes nothing.
void CopyBounded(char* dest, const char* src, int32_t size);

#endif
