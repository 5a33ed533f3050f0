#include "pgn/read/pgn_scanner.h"

namespace {

bool IsStringBlank(char c)
{
    return HasPgnClass(static_cast<uint8_t>(c), PgnBlank);
}

// A read position in the input's buffered block, kept in locals while a
// token is scanned so that the stores into the token cannot make the
// compiler fetch it again. The input learns it back from Finish, and before
// each refill, so that it is up to date also when the input runs out.
class Cursor {
public:
    explicit Cursor(PgnInput& input) : input_(input), next_(input.Next()), limit_(input.Limit()) {}

    void Finish() { input_.Take(next_); }

    Cursor(const Cursor&) = delete;
    Cursor& operator=(const Cursor&) = delete;

    // The next byte, left unread: a stop character is looked at and stays
    // for the next token. Throws PgnEndOfInput when the input has no more.
    uint8_t Peek()
    {
        if (next_ == limit_) {
            input_.Take(next_);
            input_.Fill();
            next_ = input_.Next();
            limit_ = input_.Limit();
        }
        return *next_;
    }

    // Marks the byte that Peek gave as read.
    void Advance() { ++next_; }

    uint8_t Read()
    {
        uint8_t c = Peek();
        ++next_;
        return c;
    }

private:
    PgnInput& input_;
    const uint8_t* next_;
    const uint8_t* limit_;
};

// The rest of an ordinary or glyph token that did not fit: up to a blank or a
// line end (read) or a stop character (left for the next token).
void SkipTokenRest(Cursor& input)
{
    for (;;) {
        uint8_t c = input.Peek();
        if (HasPgnClass(c, PgnWhiteSpace)) {
            input.Advance();
            return;
        }
        if (HasPgnClass(c, PgnStop)) {
            return;
        }
        input.Advance();
    }
}

// Terminates an ordinary or glyph token; one that holds 255 characters has
// the rest of its text thrown away.
int32_t EndToken(Cursor& input, char* token, int32_t length)
{
    if (length == PgnMaxTokenLength) {
        SkipTokenRest(input);
    }
    token[length] = '\0';
    return length;
}

int32_t ReadGlyph(Cursor& input, char* token)
{
    int32_t length = 1;
    while (length < PgnMaxTokenLength) {
        uint8_t c = input.Peek();
        if (!HasPgnClass(c, PgnGlyphChar)) {
            break;
        }
        input.Advance();
        token[length++] = static_cast<char>(c);
    }
    return EndToken(input, token, length);
}

int32_t ReadOrdinary(Cursor& input, char* token)
{
    int32_t length = 1;
    while (length < PgnMaxTokenLength) {
        uint8_t c = input.Peek();
        if (HasPgnClass(c, PgnWhiteSpace | PgnStop)) {
            if (HasPgnClass(c, PgnStop)) {
                break;
            }
            input.Advance();
            if (token[length - 1] != '-') {
                break;
            }
            // A token broken behind a hyphen goes on behind the white space,
            // over any number of lines: "1/2-" + "1/2", "O-" + "O".
            while (HasPgnClass(c = input.Peek(), PgnWhiteSpace)) {
                input.Advance();
            }
            if (HasPgnClass(c, PgnStop)) {
                break;
            }
        }
        input.Advance();
        token[length++] = static_cast<char>(c);
    }
    return EndToken(input, token, length);
}

// Takes the blanks off both ends of a string value of `length` characters
// and terminates it; returns the new length.
int32_t TrimStringValue(char* token, int32_t length)
{
    while (length > 0 && IsStringBlank(token[length - 1])) {
        --length;
    }
    int32_t lead = 0;
    while (lead < length && IsStringBlank(token[lead])) {
        ++lead;
    }
    if (lead != 0) {
        for (int32_t i = lead; i < length; ++i) {
            token[i - lead] = token[i];
        }
        length -= lead;
    }
    token[length] = '\0';
    return length;
}

// A quoted string's value, behind the opening quote. Escapes are kept as they
// stand: a backslash takes the byte behind it along into the value.
int32_t ReadString(Cursor& input, char* token)
{
    int32_t length = 0;
    for (;;) {
        if (length == PgnMaxTokenLength) {
            for (uint8_t c = input.Read(); c != '"'; c = input.Read()) {
                if (c == '\\') {
                    input.Read();
                }
            }
            break;
        }
        uint8_t c = input.Read();
        if (c == '"' || HasPgnClass(c, PgnLineEnd)) {
            break;
        }
        token[length++] = static_cast<char>(c);
        if (c == '\\') {
            uint8_t escaped = input.Read();
            // A backslash in the last place has no room for its byte: the
            // byte is dropped with the rest of the string.
            if (length < PgnMaxTokenLength) {
                token[length++] = static_cast<char>(escaped);
            }
        }
    }
    return TrimStringValue(token, length);
}

int32_t ScanToken(Cursor& input, char* token, int32_t* isString)
{
    uint8_t c = input.Read();
    for (;;) {
        if (HasPgnClass(c, PgnWhiteSpace)) {
            c = input.Read();
        } else if (c == '%') {
            // An escape line, in whatever column: skipped with its line end.
            while (!HasPgnClass(input.Read(), PgnLineEnd)) {
            }
            c = input.Read();
        } else {
            break;
        }
    }
    *isString = 0;
    if (c == '"') {
        *isString = 1;
        return ReadString(input, token);
    }
    token[0] = static_cast<char>(c);
    if (HasPgnClass(c, PgnSingle)) {
        token[1] = '\0';
        return 1;
    }
    if (HasPgnClass(c, PgnGlyphStart)) {
        return ReadGlyph(input, token);
    }
    return ReadOrdinary(input, token);
}

}  // namespace

const uint8_t* PgnScanBlockString(const uint8_t* quote, const uint8_t* limit, char* token, int32_t* length)
{
    const uint8_t* first = quote + 1;
    const uint8_t* end = limit - first > PgnMaxTokenLength ? first + PgnMaxTokenLength : limit;
    for (const uint8_t* next = first; next != end; ++next) {
        uint8_t c = *next;
        if (c == '"') {
            *length = TrimStringValue(token, static_cast<int32_t>(next - first));
            return next + 1;
        }
        if (c == '\\' || HasPgnClass(c, PgnLineEnd)) {
            return nullptr;
        }
        token[next - first] = static_cast<char>(c);
    }
    return nullptr;
}

int32_t PgnScanInGeneral(PgnInput& source, char* token, int32_t* isString)
{
    // Tag values, the most common strings, mostly lie inside the block.
    int32_t length;
    if (source.Next() != source.Limit() && *source.Next() == '"') {
        if (const uint8_t* end = PgnScanBlockString(source.Next(), source.Limit(), token, &length)) {
            source.Take(end);
            *isString = 1;
            return length;
        }
    }
    Cursor input(source);
    length = ScanToken(input, token, isString);
    input.Finish();
    return length;
}
