// An open game file: an SQLite database that holds the games in chunks (many
// packed records in one row, behind a table of their offsets), the games
// written since the last full chunk one row each, and the name dictionary.
// The state in memory mirrors what is committed plus the writes of the
// running bulk operation. All members are guarded by `lock`, apart from the
// lock-free reads of `names`.
#ifndef OVGAME_GAME_FILE_H
#define OVGAME_GAME_FILE_H

#include <cstdint>
#include <memory>
#include <mutex>
#include <string_view>
#include <vector>

#include "ovgame/game_buffer.h"
#include "ovgame/handle_table.h"
#include "ovgame/name_dictionary.h"
#include "ovgame/sqlite_handles.h"

namespace ovg {

// A chunk row: games with indices first to first + count - 1 (from 0).
struct ChunkInfo {
    int64_t rowid;
    int64_t first;
    uint32_t count;
};

// Chunk blob: u32 count, (count + 1) u32 offsets from the end of the offset
// table, then the records.
constexpr uint32_t ChunkGames = 1024;
constexpr size_t ChunkBytes = 256 * 1024;

struct GameFile {
    uint32_t handle = 0;
    std::mutex lock;
    Database db;
    Statement insertChunk, insertRecent, clearRecent, insertName, setDeleted, begin, beginImmediate,
        commit, rollback;
    SharedNames names;
    uint32_t namesStored = 0;
    std::vector<ChunkInfo> chunks;
    int64_t chunkedGames = 0;
    // Games behind the last chunk: records back to back, with offsets.
    std::vector<uint8_t> tailBytes;
    std::vector<uint32_t> tailOffsets{0};
    size_t tailStored = 0;  // tail games that already have their own row
    int64_t deletedCount = 0;
    int64_t deletedStored = 0;
    int bulkDepth = 0;
    // The chunk read last, and its place in `chunks`.
    int64_t cachedRow = 0;
    size_t cachedChunk = 0;
    std::vector<uint8_t> cache;

    int64_t GameCount() const { return chunkedGames + int64_t(tailOffsets.size() - 1); }
};

using FileTable = HandleTable<GameFile, 12>;
FileTable& Files();

// Opens (or with `create` replaces and makes) the game file at `path`; null
// when it cannot be opened or is no game file of this store.
std::unique_ptr<GameFile> OpenGameFile(const char* path, bool create);

// Reads chunk index and recent games from the database, dropping what memory
// held, and the names at the first load (later loads keep the dictionary);
// false when the file's content is inconsistent.
bool LoadState(GameFile& file);

// A record of the game with index `index` (from 0); empty when out of range
// or unreadable. Valid until the next call on the file.
std::string_view GameRecord(GameFile& file, int64_t index);

// Appends the game; result its index, -1 on failure.
int64_t AppendGame(GameFile& file, const GameBuffer& game);
// Sets or clears the deleted mark of the game with `index`.
bool MarkDeleted(GameFile& file, int64_t index, bool deleted);

bool BeginBulk(GameFile& file, bool immediate);
bool EndBulk(GameFile& file);
// Ends any open bulk operation (at close).
void EndAllBulk(GameFile& file);

}  // namespace ovg

#endif
