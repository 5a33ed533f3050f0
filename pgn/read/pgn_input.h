// The byte source of a PGN read: a file through a large buffer of its own, or
// a text in memory. End of input is no value: it unwinds to the game loop.
#ifndef ORVAN_PGN_READ_PGN_INPUT_H
#define ORVAN_PGN_READ_PGN_INPUT_H

#include <cstdint>
#include <cstdio>

// Thrown when the input runs out, from any depth of the scanner, the comment
// reader and the skip loops; caught by the game loop, never outside the reader.
struct PgnEndOfInput {};

class PgnInput {
public:
    // A file source when `file` is not null: the stream is read from where it
    // stands, in large blocks, and is not closed here. Otherwise a memory
    // source of `size` bytes at `text`: input ends at the first NUL of the
    // text, and without one the last byte of the block is not delivered.
    PgnInput(std::FILE* file, const char* text, int32_t size);

    PgnInput(const PgnInput&) = delete;
    PgnInput& operator=(const PgnInput&) = delete;

    // The next byte; throws PgnEndOfInput when there is none.
    uint8_t ReadChar()
    {
        if (next_ == limit_ && !Refill()) {
            throw PgnEndOfInput{};
        }
        return *next_++;
    }

    // The same inside a comment: end of input is reported to the debug trace
    // before it unwinds.
    uint8_t ReadCommentChar()
    {
        if (next_ == limit_ && !Refill()) {
            ReportEndInComment();
        }
        return *next_++;
    }

    // The buffered bytes not yet read run from Next() up to Limit(); a
    // scanner may look at them directly and mark them read with Take.
    const uint8_t* Next() const { return next_; }
    const uint8_t* Limit() const { return limit_; }
    void Take(const uint8_t* next) { next_ = next; }

    // Buffers the next block once every buffered byte is read; throws
    // PgnEndOfInput when there is none.
    void Fill()
    {
        if (!Refill()) {
            throw PgnEndOfInput{};
        }
    }

private:
    bool Refill();
    [[noreturn]] static void ReportEndInComment();

    static constexpr size_t BufferSize = 1 << 16;

    std::FILE* file_ = nullptr;
    const uint8_t* next_ = nullptr;
    const uint8_t* limit_ = nullptr;
    uint8_t buffer_[BufferSize];
};

#endif
