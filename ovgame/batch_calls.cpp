// Batches of packed games for the searches: OvgReadGames copies records
// straight from a chunk into the caller's buffer, each behind a prefix that
// names its file (for the name dictionary) and its length; GetGameHeader and
// UnpackGame read them back.
#include <algorithm>
#include <cstring>

#include "ovgame/game_file.h"
#include "ovgame/game_record.h"
#include "siblings/game_driver.h"

using namespace ovg;

namespace {

struct BatchPrefix {
    uint32_t file;
    uint32_t length;
};
constexpr size_t PrefixSize = sizeof(BatchPrefix);
static_assert(PrefixSize == 8);

// The record behind a prefix and the dictionary of its file; false for an
// unknown or closed file.
bool OpenPacked(const void* packed, const uint8_t*& record, size_t& size, const SharedNames*& names)
{
    if (packed == nullptr)
        return false;
    BatchPrefix prefix;
    std::memcpy(&prefix, packed, PrefixSize);
    const GameFile* file = Files().Find(prefix.file);
    if (file == nullptr || prefix.length < 2)
        return false;
    record = static_cast<const uint8_t*>(packed) + PrefixSize;
    size = prefix.length;
    names = &file->names;
    return true;
}

}  // namespace

int32_t OvgReadGames(uint32_t file, int32_t first, void* buffer, uint32_t* places, int32_t bufferSize,
                     int32_t maxGames)
{
    GameFile* f = Files().Find(file);
    if (f == nullptr || buffer == nullptr || places == nullptr || first < 0 || bufferSize <= 0 || maxGames < 0)
        return -1;
    std::lock_guard lock(f->lock);
    auto* out = static_cast<uint8_t*>(buffer);
    size_t used = 0;
    int32_t count = 0;
    places[0] = 0;
    for (; count < maxGames && first + int64_t(count) < f->GameCount(); ++count) {
        const std::string_view record = GameRecord(*f, first + int64_t(count));
        if (record.empty())
            return count > 0 ? count : -1;
        size_t length = record.size();
        uint8_t layout = uint8_t(record[LayoutOffset]);
        if (PrefixSize + length > size_t(bufferSize) - used) {
            // Only a game alone in a batch may come without its comments.
            if (count > 0)
                break;
            if (!LengthWithoutComments(reinterpret_cast<const uint8_t*>(record.data()), record.size(), length, layout) ||
                PrefixSize + length > size_t(bufferSize))
                return -1;
        }
        const BatchPrefix prefix{file, uint32_t(length)};
        std::memcpy(out + used, &prefix, PrefixSize);
        std::memcpy(out + used + PrefixSize, record.data(), length);
        out[used + PrefixSize + LayoutOffset] = layout;
        used += PrefixSize + length;
        places[count + 1] = uint32_t(used);
    }
    return count;
}

int32_t GetGameHeader(uint32_t game, const void* packed, int32_t mode, int32_t withStatus)
{
    GameBuffer* g = Buffers().Find(game);
    const uint8_t* record = nullptr;
    size_t size = 0;
    const SharedNames* names = nullptr;
    if (g == nullptr || mode != 0 || !OpenPacked(packed, record, size, names))
        return 0;
    return ReadHeader(*g, record, size, *names, withStatus != 0) ? 1 : 0;
}

int32_t UnpackGame(uint32_t game, const void* packed, int32_t mode)
{
    GameBuffer* g = Buffers().Find(game);
    const uint8_t* record = nullptr;
    size_t size = 0;
    const SharedNames* names = nullptr;
    if (g == nullptr || !OpenPacked(packed, record, size, names))
        return mode == 0 ? 0 : -1;
    if (mode == 0)
        return UnpackRecord(*g, record, size, *names) ? 1 : 0;
    if (mode != 2 || !g->hasPattern)
        return -1;
    return UnpackOnPattern(*g, record, size, *names);
}
