// The key searches on the real key database: a small opening tree, the
// games of a corpus prefix filed under it, and the searches checked against
// the key database's own game lists and a walk through each game.
#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include "orvan.h"
#include "ovkey/eco_tree/eco_tree.h"
#include "search/corpus_support.h"
#include "siblings/game_driver.h"
#include "siblings/key_database.h"
#include "tests/store/store_helpers.h"

namespace {

namespace fs = std::filesystem;

constexpr int PrefixGames = 800;

constexpr PackedMove Move(int from, int to) { return static_cast<PackedMove>(from | (to << 8)); }
constexpr int E2 = 12, E4 = 28, C7 = 50, C5 = 34, G1 = 6, F3 = 21, E7 = 52, E5 = 36;

// Plays coordinate moves from the start in a fresh game buffer.
void PlayFromStart(OvGameBuffer game, const std::vector<std::string>& moves)
{
    NewGameErase(game);
    ASSERT_EQ(Play(game, moves), int(moves.size()));
}

class KeySearches : public ::testing::Test {
protected:
    void SetUp() override
    {
        if (!fs::exists(CorpusPath))
            GTEST_SKIP() << "corpus not found at " << CorpusPath;
        const std::string gamePath = directory.File("games.ovg");
        ASSERT_EQ(OvOpenDatabase(gamePath.c_str(), OV_KEYDB_CREATE), 1);
        const std::vector<ovkey::EcoLine> lines = {
            {"B20", "Sicilian", {Move(E2, E4), Move(C7, C5)}},
            {"B27", "Sicilian: 2.Nf3", {Move(E2, E4), Move(C7, C5), Move(G1, F3)}},
            {"C20", "Open game", {Move(E2, E4), Move(E7, E5)}},
        };
        ASSERT_EQ(ovkey::BuildEcoTree(lines).keys, 4);

        const std::string pgnPath = directory.File("prefix.pgn");
        CopyCorpusPrefix(pgnPath, PrefixGames);
        file = OvOpenGamefile(gamePath.c_str());
        ASSERT_NE(file, 0u);
        OvPgnImport(pgnPath.c_str(), file, 0, nullptr, nullptr, 0);
        ASSERT_EQ(OvGetGamesCount(file), PrefixGames);

        game = OvAllocGameBuffer();
        PlayFromStart(game, {"e2e4", "c7c5"});
        ASSERT_NE(OvkFindPosition(IGGameGetBoard(game), &sicilian), 0);
    }
    void TearDown() override
    {
        if (game != 0)
            OvFreeGameBuffer(game);
        if (file != 0)
            OvCloseGamefile(file);
        OvCloseDatabase(0);
    }

    std::vector<int32_t> GamesOfKey(int32_t key) const
    {
        std::vector<int32_t> numbers(PrefixGames + 1);
        const int32_t count = DbsSearchKey(key, OVK_SEARCH_GAMES, OVK_SCOPE_KEY, numbers.data(), PrefixGames + 1);
        numbers.resize(count > 0 ? count : 0);
        return numbers;
    }

    // Whether the main line of game `number` reaches `position`, by walking it.
    bool MainLineReaches(int32_t number, const sPosition& position) const
    {
        const OvGameBuffer walker = OvAllocGameBuffer();
        OvReadGame(walker, file, number);
        bool reached = false;
        do {
            sPosition here;
            OvGetCurrentPos(walker, &here);
            reached = std::memcmp(&here, &position, sizeof here) == 0;
        } while (!reached && OvPlayMoves(walker, 1) > 0);
        OvFreeGameBuffer(walker);
        return reached;
    }

    TempDir directory;
    OvGameFile file = 0;
    OvGameBuffer game = 0;
    int32_t sicilian = 0;
};

TEST_F(KeySearches, KeyMovesHitsOnlyGamesWhoseMainLineReachesThePosition)
{
    PlayFromStart(game, {"e2e4", "c7c5", "b1c3"});
    sPosition wanted;
    OvGetCurrentPos(game, &wanted);
    Hits hits;
    hits.wanted = &wanted;
    sQuery query{};
    query.kind = QueryKeyMoves;
    query.key = sicilian;
    query.position = wanted;
    OvSearchGameHdrs(file, &query, &CollectHits, UserOf(hits));

    ASSERT_FALSE(hits.numbers.empty());
    EXPECT_EQ(hits.woundRight, static_cast<int>(hits.numbers.size())) << "each hit stands on the position";
    size_t next = 0;
    for (const int32_t number : GamesOfKey(sicilian)) {
        const bool hit = next < hits.numbers.size() && hits.numbers[next] == number;
        next += hit ? 1 : 0;
        EXPECT_EQ(hit, MainLineReaches(number, wanted)) << "game " << number;
    }
    EXPECT_EQ(next, hits.numbers.size()) << "hits come in the key's order, from its games only";

    Hits none;
    OvSearchKeyGames(file, 987654, &CollectHits, UserOf(none));
    EXPECT_EQ(none.calls, 2) << "an unknown key: the start and the end call";
}

}  // namespace
