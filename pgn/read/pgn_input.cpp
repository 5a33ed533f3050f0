#include "pgn/read/pgn_input.h"

#include <cstring>

#include "frame/diagnostics.h"

PgnInput::PgnInput(std::FILE* file, const char* text, int32_t size) : file_(file)
{
    if (file != nullptr || text == nullptr || size <= 0) {
        return;
    }
    // Reading the byte that brings the position up to the size ends the input,
    // so that byte is never delivered; a NUL ends the input where it stands.
    size_t usable = static_cast<size_t>(size) - 1;
    if (const void* nul = std::memchr(text, '\0', usable)) {
        usable = static_cast<size_t>(static_cast<const char*>(nul) - text);
    }
    next_ = reinterpret_cast<const uint8_t*>(text);
    limit_ = next_ + usable;
}

bool PgnInput::Refill()
{
    if (file_ == nullptr) {
        return false;
    }
    size_t count = std::fread(buffer_, 1, BufferSize, file_);
    if (count == 0) {
        return false;
    }
    next_ = buffer_;
    limit_ = buffer_ + count;
    return true;
}

void PgnInput::ReportEndInComment()
{
    DebugTrace("end of file encountered while in annotation.");
    throw PgnEndOfInput{};
}
