// The key searches: the games the key database files under a key, walked by
// its iteration with the library's lock held throughout. The iteration gives
// its visitor only a game number, so the visitor finds its search through a
// per-thread pointer to the context the search owns.
#include <utility>

#include "frame/library_mutex.h"
#include "search/search_drivers.h"
#include "search/search_report.h"
#include "search/search_resources.h"
#include "siblings/game_driver.h"
#include "siblings/key_database.h"

namespace {

struct KeySearchContext {
    SearchReport& report;
    OvGameFile file = 0;
    OvGameBuffer game = 0;
    uint8_t* buffer = nullptr;
    BoardRecord board{};  // the searched position as the store's board
};

thread_local KeySearchContext* ActiveKeySearch = nullptr;

// Makes `context` the one the visitors of this thread see, for the scope's
// lifetime; a key search started from inside a callback restores the outer one.
class ActiveKeySearchScope {
public:
    explicit ActiveKeySearchScope(KeySearchContext& context) : outer_(std::exchange(ActiveKeySearch, &context)) {}
    ~ActiveKeySearchScope() { ActiveKeySearch = outer_; }
    ActiveKeySearchScope(const ActiveKeySearchScope&) = delete;
    ActiveKeySearchScope& operator=(const ActiveKeySearchScope&) = delete;

private:
    KeySearchContext* outer_;
};

// The game handed to the host by a key game search, which reads no game.
constexpr uint32_t NoGameRead = 1;

int32_t KeyGameVisitor(int32_t number)
{
    const KeySearchContext* search = ActiveKeySearch;
    return search != nullptr && search->report.Hit(NoGameRead, number) ? 1 : 0;
}

int32_t KeyMoveVisitor(int32_t number)
{
    const KeySearchContext* search = ActiveKeySearch;
    if (search == nullptr)
        return 0;
    uint32_t places[2];
    if (OvgReadGames(search->file, number - 1, search->buffer, places, SearchBufferBytes, 1) <= 0)
        return 1;
    if (UnpackGame(search->game, search->buffer, 2) <= 0)
        return 1;  // the position is not in this game
    UnpackGame(search->game, search->buffer, 0);
    NewGameRewind(search->game);
    while (SameBoard(IGGameGetBoard(search->game), &search->board) == 0)
        if (PlayMoves(search->game, 1) <= 0)
            return 1;  // the main line ended without the position
    return search->report.Hit(search->game, number) ? 1 : 0;
}

}  // namespace

int32_t OvSearchKeyGames(OvGameFile file, int32_t key, SearchCallback callback, intptr_t user)
{
    if (callback == nullptr)
        return 0;
    const BulkOperation bulk(file);
    SearchReport report(callback, user);
    report.Start(OvGetGamesCount(file));
    {
        LibraryLock lock(LibraryMutex());
        KeySearchContext context{report};
        const ActiveKeySearchScope scope(context);
        DbsCBSearchKey(key, OVK_SEARCH_GAMES, OVK_SCOPE_KEY, KeyGameVisitor);
    }
    report.End();
    return 0;
}

int32_t OvSearchKeyMoves(OvGameFile file, int32_t key, const sPosition* position, SearchCallback callback,
                         intptr_t user)
{
    if (callback == nullptr || position == nullptr)
        return 0;
    const BulkOperation bulk(file);
    const OwnedGameBuffer gameBuffer;
    const OvGameBuffer game = gameBuffer.Get();
    SearchReport report(callback, user);
    report.Start(OvGetGamesCount(file));
    {
        const SearchDataBuffer buffer;
        if (game != 0 && buffer.Get() != nullptr) {
            ArmPositionPattern(game, *position);  // as given: nothing is sanitised here
            LibraryLock lock(LibraryMutex());
            KeySearchContext context{report, file, game, buffer.Get()};
            if (const BoardRecord* board = IGGameGetBoard(game))
                context.board = *board;  // the buffer's board moves while games are tested
            const ActiveKeySearchScope scope(context);
            DbsCBSearchKey(key, OVK_SEARCH_GAMES, OVK_SCOPE_KEY, KeyMoveVisitor);
        }
    }
    report.End();
    return 0;
}
