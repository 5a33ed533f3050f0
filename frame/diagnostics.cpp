#include "frame/diagnostics.h"

#include <cstdarg>
#include <cstdio>
#include <cstring>

#include "orvan.h"
#include "platform/debug_output.h"
#include "platform/message_box.h"

namespace {

// Writes `head` and the formatted message into `line`, cut to its size.
void FormatBehind(char (&line)[DiagnosticLineSize], const char* head, const char* format,
                  va_list arguments)
{
    size_t headLength = std::strlen(head);
    std::memcpy(line, head, headLength + 1);
    std::vsnprintf(line + headLength, sizeof line - headLength, format, arguments);
}

}  // namespace

void DebugTrace(const char* format, ...)
{
    char line[DiagnosticLineSize];
    va_list arguments;
    va_start(arguments, format);
    FormatBehind(line, "OrvanDll: ", format, arguments);
    va_end(arguments);
    WriteDebugOutput(line);
}

void InternalErrorBox(void* ownerWindow, const char* format, ...)
{
    char text[DiagnosticLineSize];
    va_list arguments;
    va_start(arguments, format);
    FormatBehind(text, "Internal Error!\n", format, arguments);
    va_end(arguments);
    ShowMessageBox(ownerWindow, text, "OrvanDll", OV_MB_ICONEXCLAMATION | OV_MB_OK);
}
