// Index files: the sort keys of one code for the games of a game file, in a
// directory the host names, and which directory each open file's indexes
// were last made in. A file holds a 24-byte head (magic, code, game count,
// fingerprint of the last game) and then one 32-bit key per game.
#include <sqlite3.h>

#include <cstdio>
#include <cstring>
#include <map>
#include <mutex>

#include "ovgame/sort_index.h"

namespace ovg {
namespace {

constexpr char Magic[4] = {'O', 'V', 'S', '1'};
constexpr size_t HeadSize = 24;

struct FileCloser {
    void operator()(std::FILE* f) const { std::fclose(f); }
};
using FilePtr = std::unique_ptr<std::FILE, FileCloser>;

void PutU32(uint8_t* at, uint32_t value)
{
    for (int i = 0; i < 4; ++i)
        at[i] = uint8_t(value >> (8 * i));
}

uint32_t GetU32(const uint8_t* at)
{
    return uint32_t(at[0]) | uint32_t(at[1]) << 8 | uint32_t(at[2]) << 16 | uint32_t(at[3]) << 24;
}

std::mutex directoriesLock;
std::map<uint32_t, std::string>& Directories()
{
    static std::map<uint32_t, std::string> directories;
    return directories;
}

}  // namespace

std::string SortIndexPath(const GameFile& file, const std::string& directory, int32_t code)
{
    const char* name = sqlite3_db_filename(file.db.get(), "main");
    std::string stem = name == nullptr ? "" : name;
    const size_t slash = stem.rfind('/');
    if (slash != std::string::npos)
        stem.erase(0, slash + 1);
    std::string path = directory;
    if (!path.empty() && path.back() != '/')
        path += '/';
    return path + stem + ".sort" + std::to_string(code);
}

uint64_t RecordFingerprint(std::string_view record)
{
    uint64_t hash = 14695981039346656037ull;  // FNV-1a
    for (size_t i = 1; i < record.size(); ++i)
        hash = (hash ^ uint8_t(record[i])) * 1099511628211ull;
    return hash ^ record.size();
}

bool WriteSortIndexFile(const std::string& path, const SortIndexFile& index)
{
    const std::string temporary = path + ".new";
    {
        FilePtr out(std::fopen(temporary.c_str(), "wb"));
        if (!out)
            return false;
        uint8_t head[HeadSize];
        std::memcpy(head, Magic, 4);
        PutU32(head + 4, uint32_t(index.code));
        PutU32(head + 8, uint32_t(index.keys.size()));
        PutU32(head + 12, uint32_t(index.fingerprint));
        PutU32(head + 16, uint32_t(index.fingerprint >> 32));
        PutU32(head + 20, 0);
        std::vector<uint8_t> body(index.keys.size() * 4);
        for (size_t i = 0; i < index.keys.size(); ++i)
            PutU32(body.data() + 4 * i, index.keys[i]);
        const bool written = std::fwrite(head, 1, HeadSize, out.get()) == HeadSize &&
                             std::fwrite(body.data(), 1, body.size(), out.get()) == body.size() &&
                             std::fflush(out.get()) == 0;
        if (!written) {
            out.reset();
            std::remove(temporary.c_str());
            return false;
        }
    }
    return std::rename(temporary.c_str(), path.c_str()) == 0;
}

bool ReadSortIndexFile(const std::string& path, int32_t code, SortIndexFile& index)
{
    FilePtr in(std::fopen(path.c_str(), "rb"));
    if (!in)
        return false;
    uint8_t head[HeadSize];
    if (std::fread(head, 1, HeadSize, in.get()) != HeadSize || std::memcmp(head, Magic, 4) != 0 ||
        GetU32(head + 4) != uint32_t(code))
        return false;
    // The size must match the count before anything is allocated for it.
    const uint32_t count = GetU32(head + 8);
    if (std::fseek(in.get(), 0, SEEK_END) != 0 || std::ftell(in.get()) != long(HeadSize + size_t(count) * 4) ||
        std::fseek(in.get(), long(HeadSize), SEEK_SET) != 0)
        return false;
    std::vector<uint8_t> body(size_t(count) * 4);
    if (std::fread(body.data(), 1, body.size(), in.get()) != body.size())
        return false;
    index.code = code;
    index.fingerprint = GetU32(head + 12) | uint64_t(GetU32(head + 16)) << 32;
    index.keys.resize(count);
    for (size_t i = 0; i < count; ++i)
        index.keys[i] = GetU32(body.data() + 4 * i);
    return true;
}

void RememberIndexDirectory(uint32_t handle, const std::string& directory)
{
    std::lock_guard lock(directoriesLock);
    Directories()[handle] = directory;
}

bool IndexDirectory(uint32_t handle, std::string& directory)
{
    std::lock_guard lock(directoriesLock);
    const auto it = Directories().find(handle);
    if (it == Directories().end())
        return false;
    directory = it->second;
    return true;
}

}  // namespace ovg
