// A key's texts and what the database keeps about it.
#include <algorithm>
#include <string>
#include <string_view>

#include "ovkey/key_record.h"
#include "ovkey/open_database.h"
#include "siblings/key_database.h"

using namespace ovkey;

namespace {

// Writes one text of the key into `text` of `size` bytes, terminated and
// cut; an unknown key writes the empty text. Result 1 when the key is known.
template <typename Field>
int32_t CopyKeyText(int32_t key, char* text, int32_t size, Field field)
{
    if (text == nullptr || size < 1)
        return 0;
    KeyRecord record;
    const bool known = WithOpenDatabase(false, [&](KeyDatabase& database) {
        return ReadKey(database, key, record);
    });
    CopyCut(text, static_cast<size_t>(size), known ? std::string_view(record.*field) : "");
    return known ? 1 : 0;
}

int32_t CountSubtreeGames(KeyDatabase& database, int32_t key)
{
    Statement count(database.connection.get(),
                    std::string(kSubtreeOfKey) +
                        "SELECT count(*) FROM lists.games WHERE key IN subtree");
    count.Bind(1, key);
    return count.Step() ? static_cast<int32_t>(count.Int(0)) : 0;
}

}  // namespace

int32_t DbsGetKeycode(int32_t key, char* text)
{
    return CopyKeyText(key, text, OV_KEY_TEXT_SIZE, &KeyRecord::code);
}

int32_t DbsGetRemark(int32_t key, char* text)
{
    return CopyKeyText(key, text, OV_KEY_TEXT_SIZE, &KeyRecord::remark);
}

int32_t OvkGetKeyName(int32_t key, char* text, int32_t reserved, int32_t size)
{
    return CopyKeyText(key, text, size, &KeyRecord::name);
}

int32_t DbsGetKeyDataInfo(int32_t key, sKeyData* record)
{
    if (record == nullptr)
        return 0;
    *record = sKeyData{};
    return WithOpenDatabase(0, [&](KeyDatabase& database) {
        KeyRecord stored;
        if (!ReadKey(database, key, stored))
            return 0;
        record->key = key;
        record->parent = stored.parent;
        record->level = stored.level;
        record->ply = static_cast<int32_t>(stored.line.size());
        record->childCount = CountChildren(database, key);
        record->gameCount = CountGames(database, key);
        record->subtreeGames = CountSubtreeGames(database, key);
        return 1;
    });
}
