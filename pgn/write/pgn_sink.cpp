#include "pgn/write/pgn_sink.h"

#include <algorithm>
#include <cstdarg>
#include <cstring>
#include <limits>

PgnSink::PgnSink(std::FILE* file) : file_(file) {}

PgnSink::PgnSink()
{
    PgnTextHandle = GlobalAlloc(GMEM_MOVEABLE, PgnTextStep);
    if (PgnTextHandle == nullptr)
        return;
    PgnTextData = static_cast<char*>(GlobalLock(PgnTextHandle));
    PgnTextSize = PgnTextData != nullptr ? PgnTextStep : 0;
}

PgnSink::~PgnSink()
{
    Flush();
    if (PgnTextHandle != nullptr) {
        GlobalUnlock(PgnTextHandle);
        GlobalFree(PgnTextHandle);
    }
}

HGLOBAL PgnSink::TakeMemoryText()
{
    if (PgnTextHandle == nullptr)
        return nullptr;
    PgnPutChar('\0', *this);
    GlobalUnlock(PgnTextHandle);
    HGLOBAL text = PgnTextHandle;
    PgnTextHandle = nullptr;
    PgnTextData = nullptr;
    PgnTextUsed = 0;
    PgnTextSize = 0;
    return text;
}

void PgnSink::Flush()
{
    if (file_ != nullptr && staged_ > 0)
        std::fwrite(stage_, 1, staged_, file_);
    staged_ = 0;
}

bool PgnSink::GrowMemoryText()
{
    if (PgnTextHandle == nullptr || PgnTextSize > std::numeric_limits<int32_t>::max() - PgnTextStep)
        return false;
    GlobalUnlock(PgnTextHandle);
    HGLOBAL grown = GlobalReAlloc(PgnTextHandle, PgnTextSize + PgnTextStep, 0);
    if (grown != nullptr) {
        PgnTextHandle = grown;
        PgnTextSize += PgnTextStep;
    }
    PgnTextData = static_cast<char*>(GlobalLock(PgnTextHandle));
    if (PgnTextData == nullptr)
        PgnTextSize = 0;
    return PgnTextUsed < PgnTextSize;
}

void PgnSink::StageFileText(std::string_view text)
{
    if (text.size() > sizeof stage_ - staged_) {
        Flush();
        if (text.size() > sizeof stage_) {
            std::fwrite(text.data(), 1, text.size(), file_);
            return;
        }
    }
    std::memcpy(stage_ + staged_, text.data(), text.size());
    staged_ += text.size();
}

char* PgnSink::TakeRoom(size_t size)
{
    if (file_ != nullptr) {
        if (size > sizeof stage_ - staged_)
            return nullptr;
        staged_ += size;
        return stage_ + staged_ - size;
    }
    if (size > PgnTextSize - PgnTextUsed)
        return nullptr;
    PgnTextUsed += size;
    return PgnTextData + PgnTextUsed - size;
}

void PgnPutChar(char c, PgnSink& sink)
{
    if (sink.file_ != nullptr) {
        if (sink.staged_ == sizeof sink.stage_)
            sink.Flush();
        sink.stage_[sink.staged_++] = c;
        return;
    }
    if (sink.PgnTextUsed < sink.PgnTextSize || sink.GrowMemoryText())
        sink.PgnTextData[sink.PgnTextUsed++] = c;
}

namespace {

// Copies a token; those of a move or a number have at most eight bytes and
// go as two overlapping words, without a call or a byte loop.
void CopyToken(char* at, std::string_view text)
{
    const size_t size = text.size();
    const char* from = text.data();
    if (size >= 4 && size <= 8) {
        std::memcpy(at, from, 4);
        std::memcpy(at + size - 4, from + size - 4, 4);
    } else if (size >= 2 && size < 4) {
        std::memcpy(at, from, 2);
        std::memcpy(at + size - 2, from + size - 2, 2);
    } else {
        std::memcpy(at, from, size);
    }
}

}  // namespace

void PgnPutText(PgnSink& sink, std::string_view text)
{
    if (text.empty())
        return;
    if (sink.file_ != nullptr) {
        sink.StageFileText(text);
        return;
    }
    if (text.size() <= sink.PgnTextSize - sink.PgnTextUsed) {
        std::memcpy(sink.PgnTextData + sink.PgnTextUsed, text.data(), text.size());
        sink.PgnTextUsed += text.size();
        return;
    }
    for (char c : text)
        PgnPutChar(c, sink);
}

void PgnPrintf(PgnSink& sink, const char* format, ...)
{
    char text[PgnPrintfSize];
    va_list arguments;
    va_start(arguments, format);
    int length = std::vsnprintf(text, sizeof text, format, arguments);
    va_end(arguments);
    if (length > 0)
        PgnPutText(sink, std::string_view(text, std::min<size_t>(length, sizeof text - 1)));
}

int32_t PgnPutToken(PgnSink& sink, std::string_view text, int32_t column, int32_t width)
{
    int64_t length = static_cast<int64_t>(text.size());
    int64_t next = length;
    char separator = '\0';
    if (column != 0) {
        if (column + length + 1 < width) {
            separator = ' ';
            next = column + length + 1;
        } else {
            separator = '\n';
        }
    }
    // A move or a number goes in one piece when there is room for it.
    const size_t size = text.size() + (separator != '\0' ? 1 : 0);
    if (char* at = sink.TakeRoom(size)) {
        if (separator != '\0')
            *at++ = separator;
        CopyToken(at, text);
    } else {
        if (separator != '\0')
            PgnPutChar(separator, sink);
        PgnPutText(sink, text);
    }
    return static_cast<int32_t>(std::min<int64_t>(next, std::numeric_limits<int32_t>::max()));
}
