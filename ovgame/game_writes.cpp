// Writing to a game file: appending games, delete marks, and bulk operations
// as transactions. A write outside a bulk operation is a transaction of its
// own. Games written in a bulk operation wait in memory until a chunk is
// full or the operation ends; a failed transaction is rolled back and memory
// is reloaded from what the file holds.
#include <cstring>

#include "ovgame/game_file.h"
#include "ovgame/game_record.h"

namespace ovg {
namespace {

size_t TailCount(const GameFile& file)
{
    return file.tailOffsets.size() - 1;
}

bool TailFull(const GameFile& file)
{
    return TailCount(file) >= ChunkGames || file.tailBytes.size() >= ChunkBytes;
}

void PutU32(std::vector<uint8_t>& out, uint32_t value)
{
    const uint8_t bytes[4] = {uint8_t(value), uint8_t(value >> 8), uint8_t(value >> 16), uint8_t(value >> 24)};
    out.insert(out.end(), bytes, bytes + 4);
}

// Turns the tail into a chunk row and drops the single rows of its games.
bool WriteChunk(GameFile& file)
{
    const uint32_t count = uint32_t(TailCount(file));
    std::vector<uint8_t> blob;
    blob.reserve(4 + 4 * (count + 1) + file.tailBytes.size());
    PutU32(blob, count);
    for (uint32_t offset : file.tailOffsets)
        PutU32(blob, offset);
    blob.insert(blob.end(), file.tailBytes.begin(), file.tailBytes.end());
    if (!file.insertChunk.Bind(1, file.chunkedGames).Bind(2, count).BindBlob(3, blob.data(), blob.size()).Run())
        return false;
    if (file.tailStored > 0 && !file.clearRecent.Run())
        return false;
    file.chunks.push_back(ChunkInfo{sqlite3_last_insert_rowid(file.db.get()), file.chunkedGames, count});
    file.chunkedGames += count;
    file.tailBytes.clear();
    file.tailOffsets.assign(1, 0);
    file.tailStored = 0;
    return true;
}

// Brings the database in step with memory inside the open transaction.
bool Flush(GameFile& file)
{
    for (uint32_t id = file.namesStored + 1; id <= file.names->Last(); ++id) {
        std::string_view text;
        file.names->Get(id, text);
        if (!file.insertName.Bind(1, id).BindBlob(2, text.data(), text.size()).Run())
            return false;
        file.namesStored = id;
    }
    if (file.deletedStored != file.deletedCount) {
        if (!file.setDeleted.Bind(1, file.deletedCount).Run())
            return false;
        file.deletedStored = file.deletedCount;
    }
    if (TailFull(file))
        return WriteChunk(file);
    for (; file.tailStored < TailCount(file); ++file.tailStored) {
        const uint32_t begin = file.tailOffsets[file.tailStored];
        const uint32_t end = file.tailOffsets[file.tailStored + 1];
        if (!file.insertRecent.Bind(1, file.chunkedGames + int64_t(file.tailStored))
                 .BindBlob(2, file.tailBytes.data() + begin, end - begin)
                 .Run())
            return false;
    }
    return true;
}

// Undoes the open transaction and returns memory to what the file holds; a
// running bulk operation goes on in a new transaction.
void Recover(GameFile& file)
{
    file.rollback.Run();
    LoadState(file);
    if (file.bulkDepth > 0 && !file.begin.Run())
        file.bulkDepth = 0;
}

// Runs `change` as a transaction of its own outside a bulk operation.
template <class Change>
bool Transact(GameFile& file, Change change)
{
    if (file.bulkDepth > 0) {
        if (change())
            return true;
        Recover(file);
        return false;
    }
    if (!file.beginImmediate.Run())
        return false;
    if (change() && Flush(file) && file.commit.Run())
        return true;
    Recover(file);
    return false;
}

bool PatchByte(GameFile& file, const char* table, int64_t row, int offset, uint8_t value)
{
    sqlite3_blob* blob = nullptr;
    if (sqlite3_blob_open(file.db.get(), "main", table, "data", row, 1, &blob) != SQLITE_OK) {
        sqlite3_blob_close(blob);
        return false;
    }
    const bool done = sqlite3_blob_write(blob, &value, 1, offset) == SQLITE_OK;
    return sqlite3_blob_close(blob) == SQLITE_OK && done;
}

}  // namespace

int64_t AppendGame(GameFile& file, const GameBuffer& game)
{
    const size_t before = file.tailBytes.size();
    if (PackGame(game, *file.names, file.tailBytes) != PackResult::Done) {
        file.tailBytes.resize(before);
        return -1;
    }
    if (file.tailBytes.size() - before > UINT32_MAX - before) {
        file.tailBytes.resize(before);
        return -1;
    }
    file.tailOffsets.push_back(uint32_t(file.tailBytes.size()));
    const int64_t index = file.GameCount() - 1;
    if (game.status & 1)
        ++file.deletedCount;
    const bool done = Transact(file, [&] { return file.bulkDepth == 0 || !TailFull(file) || Flush(file); });
    return done ? index : -1;
}

bool MarkDeleted(GameFile& file, int64_t index, bool deleted)
{
    if (index < 0 || index >= file.GameCount())
        return false;
    const std::string_view record = GameRecord(file, index);
    if (record.empty())
        return false;
    const uint8_t status = uint8_t(record[StatusOffset]);
    if (bool(status & 1) == deleted)
        return true;
    const uint8_t marked = uint8_t(deleted ? status | 1 : status & ~1);
    return Transact(file, [&] {
        if (index < file.chunkedGames) {
            // GameRecord has just cached this game's chunk.
            const size_t at = size_t(reinterpret_cast<const uint8_t*>(record.data()) - file.cache.data());
            if (!PatchByte(file, "chunks", file.cachedRow, int(at), marked))
                return false;
            file.cache[at] = marked;
        } else {
            const size_t tailIndex = size_t(index - file.chunkedGames);
            if (tailIndex < file.tailStored && !PatchByte(file, "recent", index, 0, marked))
                return false;
            file.tailBytes[file.tailOffsets[tailIndex]] = marked;
        }
        file.deletedCount += deleted ? 1 : -1;
        return true;
    });
}

bool BeginBulk(GameFile& file, bool immediate)
{
    if (file.bulkDepth == 0 && !(immediate ? file.beginImmediate : file.begin).Run())
        return false;
    ++file.bulkDepth;
    return true;
}

bool EndBulk(GameFile& file)
{
    if (file.bulkDepth == 0)
        return false;
    if (--file.bulkDepth > 0)
        return true;
    if (Flush(file) && file.commit.Run())
        return true;
    Recover(file);
    return false;
}

void EndAllBulk(GameFile& file)
{
    if (file.bulkDepth > 0) {
        file.bulkDepth = 1;
        EndBulk(file);
    }
}

}  // namespace ovg
