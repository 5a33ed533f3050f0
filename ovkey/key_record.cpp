#include "ovkey/key_record.h"

#include <algorithm>

#include "ovkey/open_database.h"

namespace ovkey {
namespace {

int32_t CountOf(Statement& count, int32_t key)
{
    count.Reset().Bind(1, key);
    const int32_t n = count.Step() ? static_cast<int32_t>(count.Int(0)) : 0;
    count.Reset();
    return n;
}

}  // namespace

bool ReadKey(KeyDatabase& database, int32_t key, KeyRecord& record)
{
    if (key == 0)
        return false;
    if (database.cache.Find(key, record))
        return true;
    Statement& row = database.keyRow;
    row.Reset().Bind(1, key);
    if (!row.Step()) {
        row.Reset();
        return false;
    }
    record.key = key;
    record.parent = static_cast<int32_t>(row.Int(0));
    record.level = static_cast<int32_t>(row.Int(1));
    record.code = row.Text(2).substr(0, kKeyTextLength);
    record.name = row.Text(3).substr(0, kKeyTextLength);
    record.remark = row.Text(4).substr(0, kKeyTextLength);
    const auto position = row.Blob(5);
    record.position.fill(0);
    std::copy_n(position.begin(), std::min(position.size(), record.position.size()),
                record.position.begin());
    record.line = LineFromBytes(row.Blob(6));
    row.Reset();
    database.cache.Keep(record);
    return true;
}

int32_t CountChildren(KeyDatabase& database, int32_t key)
{
    return CountOf(database.childrenCount, key);
}

int32_t CountGames(KeyDatabase& database, int32_t key)
{
    return CountOf(database.gamesCount, key);
}

int32_t KeyAtPosition(KeyDatabase& database, const BoardRecord& board)
{
    return database.positions.Find(board);
}

int32_t DatabaseDepth(const KeyDatabase& database)
{
    return database.longestLine + 1;
}

void CopyCut(char* dest, size_t size, std::string_view text)
{
    const size_t length = std::min(text.size(), size - 1);
    std::copy_n(text.begin(), length, dest);
    dest[length] = '\0';
}

std::vector<uint8_t> LineBytes(const std::vector<PackedMove>& line)
{
    std::vector<uint8_t> bytes;
    bytes.reserve(line.size() * 2);
    for (PackedMove move : line) {
        bytes.push_back(static_cast<uint8_t>(move & 0xFF));
        bytes.push_back(static_cast<uint8_t>(move >> 8));
    }
    return bytes;
}

std::vector<PackedMove> LineFromBytes(std::span<const uint8_t> bytes)
{
    std::vector<PackedMove> line(bytes.size() / 2);
    for (size_t i = 0; i < line.size(); ++i)
        line[i] = static_cast<PackedMove>(bytes[2 * i] | (bytes[2 * i + 1] << 8));
    return line;
}

}  // namespace ovkey
