// Text encodings at the host's edge: the library speaks Windows-1252, people
// and files mostly UTF-8.
#ifndef ORVAN_CLI_ENCODING_H
#define ORVAN_CLI_ENCODING_H

#include <cstddef>
#include <string>
#include <string_view>

namespace orvan_cli {

enum class Encoding { Auto, Utf8, Windows1252 };

// "auto", "utf-8"/"utf8", "windows-1252"/"cp1252"/"latin1"; throws CliError
// (usage) naming `option` for anything else.
Encoding ParseEncoding(std::string_view text, std::string_view option);

// Windows-1252 to UTF-8; the five unassigned bytes become U+FFFD.
std::string Windows1252ToUtf8(std::string_view text);

// UTF-8 to Windows-1252; characters without a Windows-1252 form, and bytes
// that are no valid UTF-8, become '?'.
std::string Utf8ToWindows1252(std::string_view text);

// Converts UTF-8 to Windows-1252 piece by piece: a character split between
// two pieces is kept until the next piece completes it.
class Utf8ToWindows1252Stream {
public:
    // Converts `piece` and appends the result to `out`.
    void Convert(std::string_view piece, std::string& out);
    // Ends the text: a character left incomplete becomes '?'.
    void Finish(std::string& out);

private:
    std::string pending_;
};

// Tells whether a text is valid UTF-8 with at least one character beyond
// ASCII, reading it piece by piece.
class Utf8Detector {
public:
    void Feed(std::string_view piece);
    // True when everything fed was valid UTF-8 and held a multi-byte character.
    bool IsUtf8() const { return valid_ && sawMultiByte_ && needed_ == 0; }

private:
    bool valid_ = true;
    bool sawMultiByte_ = false;
    int needed_ = 0;  // continuation bytes still expected
};

}  // namespace orvan_cli

#endif
