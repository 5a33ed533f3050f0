#include "temp_file.h"

#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <vector>

#include "cli_error.h"

namespace orvan_cli {

namespace {

std::string TemplateFor(const std::string& finalPath)
{
    if (finalPath.empty())
        return (std::filesystem::temp_directory_path() / "orvan-XXXXXX").string();
    return finalPath + ".partial-XXXXXX";
}

[[noreturn]] void WriteFailed(const std::string& path, int error)
{
    throw CliError(kExitFailed, path + ": cannot write: " + std::strerror(error));
}

}  // namespace

TempFile::TempFile(const std::string& finalPath) : finalPath_(finalPath)
{
    std::string name = TemplateFor(finalPath);
    std::vector<char> buffer(name.begin(), name.end());
    buffer.push_back('\0');
    const int fd = mkstemp(buffer.data());
    if (fd < 0)
        throw CliError(kExitFailed, (finalPath.empty() ? name : finalPath) +
                                        ": cannot create a file there: " + std::strerror(errno));
    path_ = buffer.data();
    stream_ = fdopen(fd, "wb");
    if (stream_ == nullptr) {
        close(fd);
        std::remove(path_.c_str());
        throw CliError(kExitFailed, path_ + ": cannot open: " + std::strerror(errno));
    }
}

TempFile::~TempFile()
{
    if (stream_ != nullptr)
        std::fclose(stream_);
    if (!committed_)
        std::remove(path_.c_str());
}

void TempFile::Write(std::string_view text)
{
    if (std::fwrite(text.data(), 1, text.size(), stream_) != text.size())
        WriteFailed(finalPath_.empty() ? path_ : finalPath_, errno);
}

void TempFile::Close()
{
    if (stream_ == nullptr)
        return;
    const bool ok = std::fflush(stream_) == 0 && std::ferror(stream_) == 0;
    const int error = errno;
    const bool closed = std::fclose(stream_) == 0;
    stream_ = nullptr;
    if (!ok || !closed)
        WriteFailed(finalPath_.empty() ? path_ : finalPath_, error);
}

void TempFile::Commit()
{
    Close();
    if (std::rename(path_.c_str(), finalPath_.c_str()) != 0)
        throw CliError(kExitFailed, finalPath_ + ": cannot put the file in place: " + std::strerror(errno));
    committed_ = true;
}

}  // namespace orvan_cli
