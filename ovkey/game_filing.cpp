// Storing a game in the database's game file and filing it under its key.
#include "ovkey/game_lists.h"
#include "ovkey/key_record.h"
#include "ovkey/open_database.h"
#include "siblings/game_driver.h"
#include "siblings/key_database.h"

using namespace ovkey;

namespace {

// The key of the deepest position of the game's main line that has one, no
// further than the keys reach; 0 for a game from a set-up position. The game
// is left rewound.
int32_t DeepestKey(KeyDatabase& database, uint32_t game)
{
    if (IGGameGetStatus(game, OvgStatusSetUp) != 0 || NewGameRewind(game) == 0)
        return 0;
    int32_t deepest = 0;
    const int32_t depth = DatabaseDepth(database);
    for (int32_t position = 1; position <= depth; ++position) {
        if (const BoardRecord* board = IGGameGetBoard(game))
            if (const int32_t key = KeyAtPosition(database, *board))
                deepest = key;
        if (position == depth || PlayMoves(game, 1) <= 0)
            break;
    }
    NewGameRewind(game);
    return deepest;
}

}  // namespace

int32_t OvkSaveToDatabase(uint32_t game, uint32_t file, int32_t reserved1, int32_t reserved2,
                          int32_t mode)
{
    if (game == 0)
        return 0;
    return WithOpenDatabase(0, [&](KeyDatabase& database) {
        if (IDIsDatabaseGamefile(file) == 0)
            return 0;
        const int32_t key = DeepestKey(database, game);
        int32_t number = 0;
        if (OvgWriteGame(game, file, 0, &number) == 0 || number <= 0)
            return 0;
        DropFilingsFrom(database, number);
        if (key != 0)
            FileGame(database, file, key, number);
        return number;
    });
}
