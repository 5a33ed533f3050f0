// A file written under a temporary name and either put in place at the end or
// removed, so that a failed command leaves nothing half written.
#ifndef ORVAN_CLI_TEMP_FILE_H
#define ORVAN_CLI_TEMP_FILE_H

#include <cstdio>
#include <string>

namespace orvan_cli {

class TempFile {
public:
    // Creates an empty file named after `finalPath` in its directory (or in
    // the system's temporary directory when `finalPath` is empty). Throws
    // CliError (failed) naming the directory when it cannot.
    explicit TempFile(const std::string& finalPath);
    TempFile(const TempFile&) = delete;
    TempFile& operator=(const TempFile&) = delete;
    ~TempFile();

    const std::string& Path() const { return path_; }
    std::FILE* Stream() const { return stream_; }

    // Writes `text`; throws CliError (failed) when the disk refuses.
    void Write(std::string_view text);
    // Closes the stream, checking that every byte reached the file.
    void Close();
    // Closes and renames the file to the final path.
    void Commit();

private:
    std::string finalPath_;
    std::string path_;
    std::FILE* stream_ = nullptr;
    bool committed_ = false;
};

}  // namespace orvan_cli

#endif
