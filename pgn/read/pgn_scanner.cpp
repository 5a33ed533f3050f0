#include "pgn/read/pgn_scanner.h"

namespace {

constexpr int MaxTokenLength = PgnTokenSize - 1;
constexpr uint8_t WhiteSpace = PgnBlank | PgnLineEnd;

bool IsStringBlank(char c)
{
    return HasPgnClass(static_cast<uint8_t>(c), PgnBlank);
}

// The rest of an ordinary or glyph token that did not fit: up to a blank or a
// line end (consumed) or a stop character (put back).
void SkipTokenRest(PgnInput& input)
{
    for (;;) {
        uint8_t c = input.ReadChar();
        if (HasPgnClass(c, WhiteSpace)) {
            return;
        }
        if (HasPgnClass(c, PgnStop)) {
            input.UngetChar();
            return;
        }
    }
}

// Terminates an ordinary or glyph token; one that holds 255 characters has
// the rest of its text thrown away.
int32_t EndToken(PgnInput& input, char* token, int32_t length)
{
    if (length == MaxTokenLength) {
        SkipTokenRest(input);
    }
    token[length] = '\0';
    return length;
}

int32_t ReadGlyph(PgnInput& input, char* token)
{
    int32_t length = 1;
    while (length < MaxTokenLength) {
        uint8_t c = input.ReadChar();
        if (!HasPgnClass(c, PgnGlyphChar)) {
            input.UngetChar();
            break;
        }
        token[length++] = static_cast<char>(c);
    }
    return EndToken(input, token, length);
}

int32_t ReadOrdinary(PgnInput& input, char* token)
{
    int32_t length = 1;
    while (length < MaxTokenLength) {
        uint8_t c = input.ReadChar();
        if (HasPgnClass(c, WhiteSpace)) {
            if (token[length - 1] != '-') {
                break;
            }
            // A token broken behind a hyphen goes on behind the white space,
            // over any number of lines: "1/2-" + "1/2", "O-" + "O".
            do {
                c = input.ReadChar();
            } while (HasPgnClass(c, WhiteSpace));
        }
        if (HasPgnClass(c, PgnStop)) {
            input.UngetChar();
            break;
        }
        token[length++] = static_cast<char>(c);
    }
    return EndToken(input, token, length);
}

// A quoted string's value, behind the opening quote. Escapes are kept as they
// stand: a backslash takes the byte behind it along into the value.
int32_t ReadString(PgnInput& input, char* token)
{
    int32_t length = 0;
    for (;;) {
        if (length == MaxTokenLength) {
            for (uint8_t c = input.ReadChar(); c != '"'; c = input.ReadChar()) {
                if (c == '\\') {
                    input.ReadChar();
                }
            }
            break;
        }
        uint8_t c = input.ReadChar();
        if (c == '"' || HasPgnClass(c, PgnLineEnd)) {
            break;
        }
        token[length++] = static_cast<char>(c);
        if (c == '\\') {
            uint8_t escaped = input.ReadChar();
            // A backslash in the last place has no room for its byte: the
            // byte is dropped with the rest of the string.
            if (length < MaxTokenLength) {
                token[length++] = static_cast<char>(escaped);
            }
        }
    }
    while (length > 0 && IsStringBlank(token[length - 1])) {
        --length;
    }
    int32_t lead = 0;
    while (lead < length && IsStringBlank(token[lead])) {
        ++lead;
    }
    for (int32_t i = lead; i < length; ++i) {
        token[i - lead] = token[i];
    }
    length -= lead;
    token[length] = '\0';
    return length;
}

}  // namespace

int32_t PgnNextToken(PgnInput& input, char* token, int32_t* isString)
{
    uint8_t c = input.ReadChar();
    for (;;) {
        if (HasPgnClass(c, WhiteSpace)) {
            c = input.ReadChar();
        } else if (c == '%') {
            // An escape line, in whatever column: skipped with its line end.
            while (!HasPgnClass(input.ReadChar(), PgnLineEnd)) {
            }
            c = input.ReadChar();
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
