// Appends store text to a host buffer piece by piece, translating each piece
// to ANSI and cutting at the buffer's end without notice.
#ifndef ORVAN_HEADER_TEXT_CURSOR_H
#define ORVAN_HEADER_TEXT_CURSOR_H

#include <cstdint>

#include "header/code_pages.h"

struct AnsiTextCursor {
    char* at;      // the terminator written last (or the buffer's start)
    int32_t room;  // bytes left from `at`, terminator included

    // Empties the buffer (when it has room for the terminator).
    void Clear()
    {
        if (room > 0)
            *at = '\0';
    }

    void Append(const char* oemText)
    {
        char* end = OemToAnsiCopy(at, oemText, room);
        room -= static_cast<int32_t>(end - at);
        at = end;
    }
};

#endif
