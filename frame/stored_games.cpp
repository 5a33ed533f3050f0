// Single stored games: loading one into a game buffer, writing one to its game
// file or to the open key database, deleting and undeleting.
#include "frame/library_mutex.h"
#include "orvan.h"
#include "siblings/game_driver.h"
#include "siblings/key_database.h"

namespace {

// Runs one driver load under LibraryMutex; after the release, a successful
// load records the game's number in its buffer, which belongs to this thread.
template <typename Load>
int32_t LoadAndRecordSource(OvGameBuffer game, int32_t number, Load load)
{
    int32_t loaded = 0;
    {
        LibraryLock lock(LibraryMutex());
        loaded = load();
    }
    if (loaded == 0)
        return 0;
    IGGamePutSourceLoadnumber(game, number);
    return 1;
}

}  // namespace

int32_t OvReadGame(OvGameBuffer game, OvGameFile file, int32_t number)
{
    return LoadAndRecordSource(game, number, [&] { return OvgLoadGame(game, file, number, 0); });
}

int32_t OvReadGameHeader(OvGameBuffer game, OvGameFile file, int32_t number)
{
    return LoadAndRecordSource(game, number, [&] { return OvgLoadGameHeader(game, file, number); });
}

int32_t OvWriteGame(OvGameBuffer game, OvGameFile file, int32_t* out)
{
    // The choice of store and the store itself form one step under the lock.
    LibraryLock lock(LibraryMutex());
    if (IDIsDatabaseGamefile(file) != 0)
        return OvkSaveToDatabase(game, file, 0, 0, 1);
    return OvgWriteGame(game, file, 0, out);
}

int32_t OvDeleteGame(OvGameFile file, int32_t number)
{
    if (OvgDeleteGame(file, number) != 0)
        return 0;
    // The key database counts the deleted games of its own game file.
    if (IDIsDatabaseGamefile(file) != 0)
        DbsAdjustDeletedGames(1);
    return 1;
}

int32_t OvUndeleteGame(OvGameFile file, int32_t number)
{
    if (OvgUndeleteGame(file, number) != 0)
        return 0;
    // The count follows the undelete, so that it stays the number of games
    // marked deleted.
    if (IDIsDatabaseGamefile(file) != 0)
        DbsAdjustDeletedGames(-1);
    return 1;
}
