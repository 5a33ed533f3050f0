// The driver's game file calls: open, close, count, status, bulk operations,
// writing, loading, delete marks.
#include <algorithm>

#include "ovgame/game_file.h"
#include "ovgame/game_record.h"
#include "siblings/game_driver.h"

using namespace ovg;

namespace {

// Runs `work` on the open file of `handle` under its lock; `failure` when the
// handle is not open.
template <class Result, class Work>
Result WithFile(uint32_t handle, Result failure, Work work)
{
    GameFile* file = Files().Find(handle);
    if (file == nullptr)
        return failure;
    std::lock_guard lock(file->lock);
    return work(*file);
}

// Loads game `number` through `read` (a reader of game_record.h).
template <class Read>
int32_t LoadWith(uint32_t game, uint32_t file, int32_t number, Read read)
{
    GameBuffer* g = Buffers().Find(game);
    if (g == nullptr)
        return 0;
    return WithFile(file, int32_t(0), [&](GameFile& f) {
        // A number with no game is refused before the buffer is touched; a
        // damaged record may have half filled it, so that buffer is emptied.
        const std::string_view record = GameRecord(f, int64_t(number) - 1);
        if (record.empty())
            return int32_t(0);
        if (!read(*g, reinterpret_cast<const uint8_t*>(record.data()), record.size(), f.names)) {
            EraseGame(*g);
            return int32_t(0);
        }
        return int32_t(1);
    });
}

}  // namespace

uint32_t OvgOpenGamefile(const char* path, int32_t create)
{
    std::unique_ptr<GameFile> file = OpenGameFile(path, create == 1);
    return file ? Files().Add(std::move(file)) : 0;
}

int32_t OvgCloseGamefile(uint32_t file)
{
    std::unique_ptr<GameFile> closing = Files().Remove(file);
    if (!closing)
        return 0;
    std::lock_guard lock(closing->lock);
    EndAllBulk(*closing);
    return 1;
}

int32_t OvgGetNumberOfGames(uint32_t file)
{
    return WithFile(file, int32_t(-1), [](GameFile& f) { return int32_t(std::min<int64_t>(f.GameCount(), INT32_MAX)); });
}

int32_t IGFileStatus(uint32_t file, int32_t mask)
{
    const int32_t bits = WithFile(file, int32_t(0), [](GameFile& f) {
        return OvgFileOpen | (f.bulkDepth > 0 ? OvgFileInBulk : 0) | (f.deletedCount > 0 ? OvgFileHasDeleted : 0);
    });
    return mask == 0 ? bits : bits & mask;
}

int32_t OvgFileAction(uint32_t file, int32_t action)
{
    return WithFile(file, int32_t(0), [action](GameFile& f) {
        if (action == 1 || action == 2)
            return BeginBulk(f, action == 2) ? 1 : 0;
        if (action == 0)
            return EndBulk(f) ? 1 : 0;
        return 0;
    });
}

int32_t OvgWriteGame(uint32_t game, uint32_t file, int32_t mode, int32_t* out)
{
    GameBuffer* g = Buffers().Find(game);
    if (g == nullptr || mode != 0)
        return 0;
    const int32_t number = WithFile(file, int32_t(0), [g](GameFile& f) {
        if (f.GameCount() >= INT32_MAX)
            return int32_t(0);
        const int64_t index = AppendGame(f, *g);
        return index < 0 ? int32_t(0) : int32_t(index + 1);
    });
    if (number != 0 && out != nullptr)
        *out = number;
    return number;
}

int32_t OvgLoadGame(uint32_t game, uint32_t file, int32_t number, int32_t mode)
{
    if (mode != 0)
        return 0;
    return LoadWith(game, file, number, UnpackRecord);
}

int32_t OvgLoadGameHeader(uint32_t game, uint32_t file, int32_t number)
{
    return LoadWith(game, file, number,
                    [](GameBuffer& g, const uint8_t* data, size_t size, const SharedNames& names) {
                        return ReadHeader(g, data, size, names, true);
                    });
}

int32_t OvgDeleteGame(uint32_t file, int32_t number)
{
    return WithFile(file, int32_t(-1), [number](GameFile& f) { return MarkDeleted(f, int64_t(number) - 1, true) ? 0 : -1; });
}

int32_t OvgUndeleteGame(uint32_t file, int32_t number)
{
    return WithFile(file, int32_t(-1), [number](GameFile& f) { return MarkDeleted(f, int64_t(number) - 1, false) ? 0 : -1; });
}
