// The output channel of the PGN writer and its byte and token writers.
//
// A sink sends text to a file stream or into the memory text: a movable
// memory block that grows in steps of PgnTextStep bytes. It holds all the
// working state of one writing operation, so that writers on different
// threads never share anything.
#ifndef ORVAN_PGN_WRITE_PGN_SINK_H
#define ORVAN_PGN_WRITE_PGN_SINK_H

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string_view>

#include "orvan.h"

// First size of the memory text block and the size of each growth step.
inline constexpr size_t PgnTextStep = 16384;

// Room of PgnPrintf, terminator included.
inline constexpr int PgnPrintfSize = 512;

class PgnSink {
public:
    // Text goes to `file`, which stays the caller's. Bytes are collected in
    // the sink and handed to the stream in blocks; Flush and the destructor
    // hand over what is pending. A null file takes nothing: every byte is lost.
    explicit PgnSink(std::FILE* file);

    // Text goes into a new movable block of PgnTextStep bytes, locked for the
    // sink's life. HasMemoryText() is false when the block could not be had;
    // every byte is then lost.
    PgnSink();

    // A file sink flushes; a memory sink frees its block unless it was taken.
    ~PgnSink();
    PgnSink(const PgnSink&) = delete;
    PgnSink& operator=(const PgnSink&) = delete;

    bool HasMemoryText() const { return PgnTextHandle != nullptr; }

    // Bytes of memory text written so far.
    size_t MemoryTextUsed() const { return PgnTextUsed; }

    // Ends the memory text: writes its terminating NUL, unlocks the block and
    // hands it over; the caller owns it from now on and frees it with
    // GlobalFree. The block holds at least the text and its NUL, in a multiple
    // of PgnTextStep bytes. Null when the sink has no block (a file sink, a
    // failed allocation, or a second call). Nothing is written afterwards.
    HGLOBAL TakeMemoryText();

    // Hands the collected bytes of a file sink to its stream.
    void Flush();

private:
    friend void PgnPutChar(char c, PgnSink& sink);
    friend void PgnPutText(PgnSink& sink, std::string_view text);
    friend int32_t PgnPutToken(PgnSink& sink, std::string_view text, int32_t column, int32_t width);

    // Where `size` bytes can go at once without a flush or a growth, null
    // when they cannot; the caller fills them.
    char* TakeRoom(size_t size);

    // Grows the memory text by one step; false when the block cannot grow.
    bool GrowMemoryText();
    void StageFileText(std::string_view text);

    std::FILE* file_ = nullptr;
    size_t staged_ = 0;
    char stage_[8192];

    HGLOBAL PgnTextHandle = nullptr;
    char* PgnTextData = nullptr;
    size_t PgnTextUsed = 0;
    size_t PgnTextSize = 0;
};

// One byte to the sink. When the memory text is full it grows by one step;
// if it cannot, the byte is lost, and the next byte tries again.
void PgnPutChar(char c, PgnSink& sink);

// The bytes of `text` to the sink, as PgnPutChar would write them one by one.
void PgnPutText(PgnSink& sink, std::string_view text);

// Formats with printf conversions into PgnPrintfSize bytes and writes the
// result; a longer text is cut to PgnPrintfSize - 1 characters.
void PgnPrintf(PgnSink& sink, const char* format, ...) __attribute__((format(printf, 2, 3)));

// Writes a token of movetext behind a line holding `column` characters. At
// column 0 the token starts the line; otherwise a blank separates it when
// column + 1 + length stays below `width`, and a line feed when not. A token
// longer than a line stands alone on an overlong line. Returns the new column.
int32_t PgnPutToken(PgnSink& sink, std::string_view text, int32_t column, int32_t width);

#endif
