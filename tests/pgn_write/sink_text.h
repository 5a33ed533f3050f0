// Test helper: the text a memory sink holds.
#ifndef ORVAN_TESTS_PGN_WRITE_SINK_TEXT_H
#define ORVAN_TESTS_PGN_WRITE_SINK_TEXT_H

#include <cstring>
#include <string>

#include "orvan.h"
#include "pgn/write/pgn_sink.h"

// Takes the memory text of `sink` and gives its text (up to the terminator
// that TakeMemoryText adds); the block is freed.
inline std::string TakeText(PgnSink& sink)
{
    HGLOBAL block = sink.TakeMemoryText();
    if (block == nullptr)
        return "<no block>";
    const char* data = static_cast<const char*>(GlobalLock(block));
    std::string text(data, strnlen(data, GlobalSize(block)));
    GlobalUnlock(block);
    GlobalFree(block);
    return text;
}

#endif
