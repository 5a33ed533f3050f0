// Memory texts and scratch files for the import and export tests.
#ifndef ORVAN_TESTS_IMPORT_EXPORT_STORE_HELPERS_H
#define ORVAN_TESTS_IMPORT_EXPORT_STORE_HELPERS_H

#include <cstring>
#include <filesystem>
#include <string>
#include <string_view>
#include <unistd.h>

#include "orvan.h"

// A movable memory block holding `text` and a NUL; the caller frees it.
inline HGLOBAL MemoryText(std::string_view text)
{
    HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, text.size() + 1);
    std::memcpy(GlobalLock(block), text.data(), text.size());
    GlobalUnlock(block);
    return block;
}

// The text of a movable memory block up to its first NUL.
inline std::string TextOfBlock(HGLOBAL block)
{
    const auto* data = static_cast<const char*>(GlobalLock(block));
    std::string text(data, strnlen(data, GlobalSize(block)));
    GlobalUnlock(block);
    return text;
}

// A file path in a directory of its own, removed with all its content.
class ScratchPath {
public:
    explicit ScratchPath(const std::string& name)
        : directory_(std::filesystem::temp_directory_path() / ("orvan_ie_" + std::to_string(getpid()) + "_" + name)),
          path_((directory_ / name).string())
    {
        std::filesystem::remove_all(directory_);
        std::filesystem::create_directories(directory_);
    }
    ~ScratchPath() { std::filesystem::remove_all(directory_); }
    const char* c_str() const { return path_.c_str(); }
    const std::string& str() const { return path_; }

private:
    std::filesystem::path directory_;
    std::string path_;
};

#endif
