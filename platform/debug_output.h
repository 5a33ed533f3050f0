// Debug output: where the library's trace records go. The host sets a sink
// with OvSetDebugSink; without one, records are dropped.
#ifndef ORVAN_PLATFORM_DEBUG_OUTPUT_H
#define ORVAN_PLATFORM_DEBUG_OUTPUT_H

// Hands one terminated record to the host's sink, if any.
void WriteDebugOutput(const char* text);

#endif
