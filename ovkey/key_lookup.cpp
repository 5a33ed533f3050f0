// Finding positions, and a key's position and moves.
#include <cstring>

#include "ovkey/key_record.h"
#include "ovkey/open_database.h"
#include "siblings/game_driver.h"
#include "siblings/key_database.h"

using namespace ovkey;

int32_t DbsGetDatabaseDepth(void)
{
    return WithOpenDatabase(0, [](KeyDatabase& database) { return DatabaseDepth(database); });
}

int32_t OvkFindPosition(const BoardRecord* board, int32_t* key)
{
    if (board == nullptr || key == nullptr)
        return 0;
    const int32_t found =
        WithOpenDatabase(0, [&](KeyDatabase& database) { return KeyAtPosition(database, *board); });
    if (found == 0)
        return 0;
    *key = found;
    return 1;
}

int32_t OvkGetKeyPosition(int32_t key, BoardRecord* board)
{
    if (board == nullptr)
        return 0;
    KeyRecord record;
    const bool known = WithOpenDatabase(false, [&](KeyDatabase& database) {
        return ReadKey(database, key, record);
    });
    if (!known) {
        std::memset(board, 0, sizeof *board);
        return 0;
    }
    IGNewBoard(board);
    PutKeyPosition(record.position, static_cast<int32_t>(record.line.size()), *board);
    return 1;
}

int32_t DbsGetKeyMove(int32_t key, int32_t reserved, int32_t which)
{
    KeyRecord record;
    const bool known = WithOpenDatabase(false, [&](KeyDatabase& database) {
        return ReadKey(database, key, record);
    });
    const auto plies = static_cast<int32_t>(record.line.size());
    if (!known || which < 0 || which > plies || plies == 0)
        return 0;
    return record.line[static_cast<size_t>(which == OV_KEYMOVE_LAST ? plies - 1 : which - 1)];
}
