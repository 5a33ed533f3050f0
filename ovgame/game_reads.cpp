// Finding the record of a game: in a chunk (read whole into the file's cache
// and checked once) or among the games behind the last chunk.
#include <algorithm>
#include <cstring>

#include "ovgame/game_file.h"

namespace ovg {
namespace {

uint32_t GetU32(const uint8_t* p)
{
    return uint32_t(p[0]) | uint32_t(p[1]) << 8 | uint32_t(p[2]) << 16 | uint32_t(p[3]) << 24;
}

// Reads the chunk into the cache and checks its offset table.
bool LoadChunk(GameFile& file, const ChunkInfo& chunk)
{
    if (file.cachedRow == chunk.rowid)
        return true;
    file.cachedRow = 0;
    sqlite3_blob* blob = nullptr;
    if (sqlite3_blob_open(file.db.get(), "main", "chunks", "data", chunk.rowid, 0, &blob) != SQLITE_OK) {
        sqlite3_blob_close(blob);
        return false;
    }
    const int size = sqlite3_blob_bytes(blob);
    file.cache.resize(size_t(size));
    const bool read = sqlite3_blob_read(blob, file.cache.data(), size, 0) == SQLITE_OK;
    sqlite3_blob_close(blob);
    const size_t table = 4 + 4 * (size_t(chunk.count) + 1);
    if (!read || size_t(size) < table || GetU32(file.cache.data()) != chunk.count)
        return false;
    uint32_t previous = 0;
    for (uint32_t k = 0; k <= chunk.count; ++k) {
        const uint32_t offset = GetU32(file.cache.data() + 4 + 4 * k);
        if (offset < previous || (k == 0 && offset != 0) || (k > 0 && offset - previous < 2))
            return false;
        previous = offset;
    }
    if (previous != size_t(size) - table)
        return false;
    file.cachedRow = chunk.rowid;
    return true;
}

}  // namespace

std::string_view GameRecord(GameFile& file, int64_t index)
{
    if (index < 0 || index >= file.GameCount())
        return {};
    if (index >= file.chunkedGames) {
        const size_t k = size_t(index - file.chunkedGames);
        const uint32_t begin = file.tailOffsets[k];
        return {reinterpret_cast<const char*>(file.tailBytes.data()) + begin, file.tailOffsets[k + 1] - begin};
    }
    // Games are mostly read in order, so the chunk read last is tried first.
    size_t place = file.cachedChunk;
    if (file.cachedRow == 0 || place >= file.chunks.size() || file.chunks[place].rowid != file.cachedRow ||
        index < file.chunks[place].first || index - file.chunks[place].first >= file.chunks[place].count) {
        const auto it = std::upper_bound(file.chunks.begin(), file.chunks.end(), index,
                                         [](int64_t i, const ChunkInfo& c) { return i < c.first; });
        place = size_t(it - file.chunks.begin()) - 1;
    }
    const ChunkInfo& chunk = file.chunks[place];
    if (!LoadChunk(file, chunk))
        return {};
    file.cachedChunk = place;
    const uint8_t* base = file.cache.data();
    const size_t table = 4 + 4 * (size_t(chunk.count) + 1);
    const size_t k = size_t(index - chunk.first);
    const uint32_t begin = GetU32(base + 4 + 4 * k);
    const uint32_t end = GetU32(base + 4 + 4 * (k + 1));
    return {reinterpret_cast<const char*>(base) + table + begin, end - begin};
}

}  // namespace ovg
