// A PGN file made ready for the library: its games counted, its encoding
// found, and UTF-8 text converted to Windows-1252 in a temporary file, piece
// by piece so that a large file never sits whole in memory.
#ifndef ORVAN_CLI_PGN_SOURCE_H
#define ORVAN_CLI_PGN_SOURCE_H

#include <cstdint>
#include <memory>
#include <string>

#include "encoding.h"
#include "temp_file.h"

namespace orvan_cli {

class PgnSource {
public:
    // Reads `path` once (twice for UTF-8). Throws CliError (bad input) naming
    // the file when it is missing or unreadable.
    PgnSource(const std::string& path, Encoding encoding);

    // The file the library should read: the original or the converted copy.
    const std::string& LibraryPath() const { return converted_ ? converted_->Path() : path_; }
    // Games the text seems to hold: its tag sections.
    int64_t GameCount() const { return games_; }
    Encoding Found() const { return found_; }

private:
    std::string path_;
    int64_t games_ = 0;
    Encoding found_ = Encoding::Windows1252;
    std::unique_ptr<TempFile> converted_;
};

// Counts the games of PGN text fed piece by piece: a game starts at a tag line
// that follows movetext or the start of the text.
class PgnGameCounter {
public:
    void Feed(std::string_view piece);
    int64_t Count() const { return count_; }

private:
    int64_t count_ = 0;
    bool atLineStart_ = true;
    bool inTags_ = false;
    bool lineSignificant_ = false;  // the current line has begun with something
    bool inComment_ = false;
};

}  // namespace orvan_cli

#endif
