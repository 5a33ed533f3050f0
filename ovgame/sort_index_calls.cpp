// The driver's sort index calls: make index files, remove one, and order the
// games of a file by a sort code, from a fresh index file where there is one
// and from the packed records for the games it does not cover.
#include <algorithm>
#include <cstdio>

#include "ovgame/sort_index.h"
#include "siblings/game_driver.h"

using namespace ovg;

namespace {

constexpr uint32_t AllCodes = (1u << SortCodeCount) - 1;
constexpr uint32_t DeletedKeyBit = 1;  // the deleted flag in the status key

// Takes the keys of a leading run of games from the index file of `code` in
// the file's index directory, when that file is fresh: it covers no more
// games than the file has, its last game is still the same record, and its
// texts are known. Result the number of games taken.
size_t KeysFromIndexFile(uint32_t handle, GameFile& file, int32_t code, std::vector<uint32_t>& keys)
{
    std::string directory;
    SortIndexFile index;
    if (!IndexDirectory(handle, directory) ||
        !ReadSortIndexFile(SortIndexPath(file, directory, code), code, index) ||
        int64_t(index.keys.size()) > file.GameCount() || index.keys.empty())
        return 0;
    if (RecordFingerprint(GameRecord(file, int64_t(index.keys.size()) - 1)) != index.fingerprint)
        return 0;
    if (IsTextSortCode(code) &&
        std::any_of(index.keys.begin(), index.keys.end(), [&](uint32_t id) { return id > file.names->Last(); }))
        return 0;
    // Only the deleted flag of a status can change after a game is stored;
    // the caller takes status keys from a file only when no game is deleted.
    if (code == OvgSortStatus) {
        for (uint32_t& key : index.keys)
            key &= ~DeletedKeyBit;
    }
    std::copy(index.keys.begin(), index.keys.end(), keys.begin());
    return index.keys.size();
}

// Orders games `first` to the last (indices from 0) of the file with
// `handle` by `code`; false for a damaged record.
bool OrderGames(uint32_t handle, GameFile& file, int32_t code, bool descending, int64_t first, bool skipDeleted,
                std::vector<uint64_t>& order)
{
    const int64_t total = file.GameCount();
    std::vector<uint32_t> keys(size_t(std::max<int64_t>(total, 0)));
    const bool needStatus = skipDeleted && file.deletedCount > 0;
    const bool indexUsable = file.deletedCount == 0 || (!skipDeleted && code != OvgSortStatus);
    const size_t fromFile = indexUsable ? KeysFromIndexFile(handle, file, code, keys) : 0;
    std::vector<uint8_t> deleted(needStatus ? keys.size() : 0);
    for (int64_t i = std::max<int64_t>(first, int64_t(fromFile)); i < total; ++i) {
        const std::string_view record = GameRecord(file, i);
        SortKeys gameKeys;
        if (record.empty() || !ReadSortKeys(reinterpret_cast<const uint8_t*>(record.data()), record.size(), i, gameKeys))
            return false;
        keys[size_t(i)] = gameKeys[code - 1];
        if (needStatus)
            deleted[size_t(i)] = gameKeys[OvgSortStatus - 1] & DeletedKeyBit;
    }
    if (IsTextSortCode(code)) {
        const std::vector<uint32_t> ranks = TextRanks(*file.names);
        for (int64_t i = first; i < total; ++i) {
            if (keys[size_t(i)] >= ranks.size())
                return false;
            keys[size_t(i)] = ranks[keys[size_t(i)]];
        }
    }
    order.clear();
    order.reserve(size_t(std::max<int64_t>(total - first, 0)));
    for (int64_t i = first; i < total; ++i) {
        if (needStatus && deleted[size_t(i)])
            continue;
        const uint32_t key = descending ? ~keys[size_t(i)] : keys[size_t(i)];
        order.push_back(uint64_t(key) << 32 | uint64_t(i));
    }
    std::sort(order.begin(), order.end());
    return true;
}

}  // namespace

int32_t OvgIndexCreate(uint32_t file, intptr_t codes, intptr_t reserved1, const char* directory,
                       intptr_t reserved2, intptr_t reserved3, intptr_t reserved4)
{
    GameFile* f = Files().Find(file);
    const uint32_t mask = codes == 0 ? AllCodes : uint32_t(codes);
    if (f == nullptr || directory == nullptr || reserved1 != 0 || reserved2 != 0 || reserved3 != 0 ||
        reserved4 != 0 || codes < 0 || (uint64_t(codes) & ~uint64_t(AllCodes)) != 0)
        return 0;
    std::lock_guard lock(f->lock);
    const int64_t total = f->GameCount();
    std::vector<SortIndexFile> indexes;
    for (int32_t code = 1; code <= SortCodeCount; ++code) {
        if (mask & (1u << (code - 1))) {
            indexes.push_back(SortIndexFile{code, 0, {}});
            indexes.back().keys.reserve(size_t(total));
        }
    }
    for (int64_t i = 0; i < total; ++i) {
        const std::string_view record = GameRecord(*f, i);
        SortKeys keys;
        if (record.empty() || !ReadSortKeys(reinterpret_cast<const uint8_t*>(record.data()), record.size(), i, keys))
            return 0;
        for (SortIndexFile& index : indexes)
            index.keys.push_back(keys[index.code - 1]);
    }
    const uint64_t fingerprint = total > 0 ? RecordFingerprint(GameRecord(*f, total - 1)) : 0;
    int32_t written = 0;
    for (SortIndexFile& index : indexes) {
        index.fingerprint = fingerprint;
        written += WriteSortIndexFile(SortIndexPath(*f, directory, index.code), index) ? 1 : 0;
    }
    if (written > 0)
        RememberIndexDirectory(file, directory);
    return written;
}

int32_t OvgIndexDelete(uint32_t file, int32_t code, intptr_t directory)
{
    GameFile* f = Files().Find(file);
    const int32_t sortCode = code == OvgStatusIndex ? OvgSortStatus : code;
    if (f == nullptr || directory == 0 || sortCode < 1 || sortCode > SortCodeCount)
        return -1;
    std::lock_guard lock(f->lock);
    const std::string path = SortIndexPath(*f, reinterpret_cast<const char*>(directory), sortCode);
    return std::remove(path.c_str()) == 0 ? 0 : -1;
}

int32_t OvgIndexSort(uint32_t file, intptr_t firstGame, intptr_t skipDeleted, int32_t count, int32_t code,
                     int32_t direction, intptr_t numbers)
{
    GameFile* f = Files().Find(file);
    if (f == nullptr || code < 1 || code > SortCodeCount || (direction != 1 && direction != -2) || count < 0 ||
        (count > 0 && numbers == 0))
        return -1;
    std::vector<uint64_t> order;
    {
        std::lock_guard lock(f->lock);
        const int64_t first = std::max<int64_t>(int64_t(firstGame), 1) - 1;
        if (!OrderGames(file, *f, code, direction == -2, first, skipDeleted != 0, order))
            return -1;
    }
    auto* out = reinterpret_cast<int32_t*>(numbers);
    const size_t delivered = std::min(order.size(), size_t(count));
    for (size_t k = 0; k < delivered; ++k)
        out[k] = int32_t(uint32_t(order[k]) + 1);
    return int32_t(std::min<size_t>(order.size(), INT32_MAX));
}
