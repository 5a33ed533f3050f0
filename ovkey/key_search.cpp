// A key's child keys and games: delivered into an array, or to a visitor.
#include <climits>
#include <string>
#include <string_view>
#include <vector>

#include "ovkey/key_record.h"
#include "ovkey/open_database.h"
#include "siblings/key_database.h"

using namespace ovkey;

namespace {

// Games handed to a visitor per query, so that a visitor may change the lists
// between two rounds.
constexpr int32_t kVisitRound = 512;

bool ValidRequest(int32_t what, int32_t scope)
{
    return (what == OVK_SEARCH_CHILDREN || what == OVK_SEARCH_GAMES) &&
           (scope == OVK_SCOPE_KEY || scope == OVK_SCOPE_SUBTREE);
}

// Key 0 stands above the root keys: its children are the roots.
bool KnownKey(KeyDatabase& database, int32_t key)
{
    KeyRecord record;
    return key == 0 || ReadKey(database, key, record);
}

// Which games a search takes: those filed under ?1 itself, or under it and
// every key below it.
std::string GamesOf(int32_t scope, std::string_view select)
{
    if (scope == OVK_SCOPE_KEY)
        return "SELECT " + std::string(select) + " FROM lists.games WHERE key = ?1";
    return std::string(kSubtreeOfKey) + "SELECT " + std::string(select) +
           " FROM lists.games WHERE key IN subtree";
}

// The query that gives, for ?1 the key, ?2 the last number delivered, ?3 the
// highest game number wanted and ?4 a limit, the next child keys or game
// numbers in their order (children come all in one round).
Statement SearchQuery(KeyDatabase& database, int32_t what, int32_t scope)
{
    std::string sql;
    if (what == OVK_SEARCH_CHILDREN && scope == OVK_SCOPE_KEY)
        sql = "SELECT id FROM keys WHERE parent = ?1 ORDER BY code, id LIMIT ?4";
    else if (what == OVK_SEARCH_CHILDREN)
        sql = std::string(kSubtreeOfKey) +
              "SELECT id FROM keys WHERE id IN subtree AND id != ?1 ORDER BY code, id LIMIT ?4";
    else
        sql = GamesOf(scope, "DISTINCT game") + " AND game > ?2 AND game <= ?3 ORDER BY game LIMIT ?4";
    return Statement(database.connection.get(), sql);
}

// The highest game number filed for the search now: a visitor that files
// more games under the key does not make the iteration endless.
int32_t HighestGame(KeyDatabase& database, int32_t key, int32_t scope)
{
    Statement highest(database.connection.get(), GamesOf(scope, "coalesce(max(game), 0)"));
    highest.Bind(1, key);
    return highest.Step() ? static_cast<int32_t>(highest.Int(0)) : 0;
}

// Up to `limit` numbers after `after`, none above `upTo`.
std::vector<int32_t> NextNumbers(Statement& query, int32_t key, int32_t after, int32_t limit,
                                 int32_t upTo)
{
    std::vector<int32_t> numbers;
    query.Reset().Bind(1, key).Bind(2, after).Bind(3, upTo).Bind(4, limit);
    while (query.Step())
        numbers.push_back(static_cast<int32_t>(query.Int(0)));
    query.Reset();
    return numbers;
}

}  // namespace

int32_t DbsSearchKey(int32_t key, int32_t what, int32_t scope, int32_t* array, int32_t size)
{
    if (!ValidRequest(what, scope) || size < 0 || (array == nullptr && size > 0))
        return -1;
    return WithOpenDatabase(-1, [&](KeyDatabase& database) {
        if (!KnownKey(database, key))
            return -1;
        Statement query = SearchQuery(database, what, scope);
        const std::vector<int32_t> numbers = NextNumbers(query, key, 0, size, INT32_MAX);
        for (size_t i = 0; i < numbers.size(); ++i)
            array[i] = what == OVK_SEARCH_CHILDREN ? -numbers[i] : numbers[i];
        return static_cast<int32_t>(numbers.size());
    });
}

int32_t DbsCBSearchKey(int32_t key, int32_t what, int32_t scope, DbsGameVisitor visitor)
{
    if (what != OVK_SEARCH_GAMES || !ValidRequest(what, scope) || visitor == nullptr)
        return -1;
    KeyDatabaseLock lock(KeyDatabaseMutex());
    KeyDatabase* database = OpenKeyDatabase();
    if (database == nullptr || !KnownKey(*database, key))
        return -1;
    const uint64_t generation = database->generation;
    Statement query = SearchQuery(*database, what, scope);
    const int32_t highest = HighestGame(*database, key, scope);
    int32_t calls = 0;
    int32_t last = 0;
    for (;;) {
        const std::vector<int32_t> round = NextNumbers(query, key, last, kVisitRound, highest);
        for (int32_t number : round) {
            ++calls;
            if (visitor(number) == 0)
                return calls;
            // The visitor may have closed the database, or opened another.
            database = OpenKeyDatabase();
            if (database == nullptr || database->generation != generation)
                return calls;
        }
        if (round.size() < static_cast<size_t>(kVisitRound))
            return calls;
        last = round.back();
    }
}
