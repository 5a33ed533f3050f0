#include "pgn_source.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <vector>

#include "cli_error.h"

namespace orvan_cli {

namespace {

constexpr size_t kPieceSize = 1 << 16;

// Closes a C stream on every path.
struct InputFile {
    explicit InputFile(const std::string& path) : stream(std::fopen(path.c_str(), "rb")) {}
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;
    ~InputFile()
    {
        if (stream != nullptr)
            std::fclose(stream);
    }
    std::FILE* stream;
};

// Calls `use` with each piece of the file; throws CliError on a read error.
template <typename Use>
void ReadPieces(const std::string& path, Use&& use)
{
    InputFile input(path);
    if (input.stream == nullptr)
        throw CliError(kExitBadInput, path + ": cannot read: " + std::strerror(errno));
    std::vector<char> buffer(kPieceSize);
    size_t got = 0;
    while ((got = std::fread(buffer.data(), 1, buffer.size(), input.stream)) > 0)
        use(std::string_view(buffer.data(), got));
    if (std::ferror(input.stream) != 0)
        throw CliError(kExitBadInput, path + ": read error");
}

}  // namespace

void PgnGameCounter::Feed(std::string_view piece)
{
    for (char c : piece) {
        if (inComment_) {
            inComment_ = c != '}';
            atLineStart_ = c == '\n';
            continue;
        }
        if (c == '\n') {
            atLineStart_ = true;
            lineSignificant_ = false;
            continue;
        }
        if (c == ' ' || c == '\t' || c == '\r')
            continue;
        if (atLineStart_ && !lineSignificant_) {
            const bool tagLine = c == '[';
            if (tagLine && !inTags_)
                ++count_;
            inTags_ = tagLine;
            lineSignificant_ = true;
        }
        atLineStart_ = false;
        if (c == '{')
            inComment_ = true;
    }
}

PgnSource::PgnSource(const std::string& path, Encoding encoding) : path_(path)
{
    std::error_code error;
    if (!std::filesystem::exists(path, error))
        throw CliError(kExitBadInput, path + ": no such file");
    if (std::filesystem::is_directory(path, error))
        throw CliError(kExitBadInput, path + ": is a directory, not a PGN file");

    PgnGameCounter counter;
    Utf8Detector detector;
    ReadPieces(path, [&](std::string_view piece) {
        counter.Feed(piece);
        if (encoding == Encoding::Auto)
            detector.Feed(piece);
    });
    games_ = counter.Count();
    found_ = encoding == Encoding::Auto ? (detector.IsUtf8() ? Encoding::Utf8 : Encoding::Windows1252)
                                        : encoding;
    if (found_ != Encoding::Utf8)
        return;

    converted_ = std::make_unique<TempFile>(std::string());
    Utf8ToWindows1252Stream stream;
    std::string out;
    ReadPieces(path, [&](std::string_view piece) {
        out.clear();
        stream.Convert(piece, out);
        converted_->Write(out);
    });
    out.clear();
    stream.Finish(out);
    converted_->Write(out);
    converted_->Close();
}

}  // namespace orvan_cli
