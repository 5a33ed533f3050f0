// The two ways the library speaks outside its results: the debug trace and
// the internal error box.
#ifndef ORVAN_FRAME_DIAGNOSTICS_H
#define ORVAN_FRAME_DIAGNOSTICS_H

// Size of the trace line and of the error box text, terminator included.
// Longer messages are cut.
inline constexpr int DiagnosticLineSize = 256;

// Writes one trace record: "OrvanDll: " and the formatted message, with no
// line end added. Formats use printf conversions (%s, %d, %c in this library).
void DebugTrace(const char* format, ...) __attribute__((format(printf, 1, 2)));

// Shows "Internal Error!\n" and the formatted message in a box titled
// "OrvanDll" with an exclamation icon and an OK button; returns once answered.
void InternalErrorBox(void* ownerWindow, const char* format, ...)
    __attribute__((format(printf, 2, 3)));

#endif
