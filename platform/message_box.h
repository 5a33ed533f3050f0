// Message boxes: shown through the host's sink, or written to standard error
// when the host set none.
#ifndef ORVAN_PLATFORM_MESSAGE_BOX_H
#define ORVAN_PLATFORM_MESSAGE_BOX_H

#include <cstdint>

// Shows a box and returns the button chosen (OV_IDOK without a sink).
int32_t ShowMessageBox(void* owner, const char* text, const char* caption, uint32_t style);

#endif
