// Games stored through the key database: filed under the deepest key of their
// main line, listed and visited by key, kept across reopening.
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "keydb/key_test_support.h"
#include "siblings/game_driver.h"
#include "siblings/key_database.h"

namespace {

class GameFiling : public KeyTreeTest {
protected:
    void SetUp() override
    {
        KeyTreeTest::SetUp();
        file = OvgOpenGamefile(gameFile.c_str(), 0);
        game = IGGameOpenGame();
        ASSERT_TRUE(file != 0 && game != 0);
    }
    void TearDown() override
    {
        IGGameCloseGame(game);
        OvgCloseGamefile(file);
        KeyTreeTest::TearDown();
    }

    // Builds a game of coordinate moves in the buffer and stores it.
    int32_t Save(const std::vector<std::string>& moves)
    {
        EXPECT_EQ(NewGameErase(game), 1);
        EXPECT_EQ(Play(game, moves), int(moves.size()));
        return OvkSaveToDatabase(game, file, 0, 0, 1);
    }

    std::vector<int32_t> Games(int32_t key, int32_t scope)
    {
        std::vector<int32_t> numbers(16);
        const int32_t n = DbsSearchKey(key, OVK_SEARCH_GAMES, scope, numbers.data(), 16);
        numbers.resize(static_cast<size_t>(std::max(n, 0)));
        return numbers;
    }

    uint32_t file = 0;
    uint32_t game = 0;
};

TEST_F(GameFiling, GamesGoUnderTheDeepestKeyTheyReach)
{
    const int32_t najdorfLike = Save({"e2e4", "c7c5", "g1f3", "d7d6", "d2d4"});
    const int32_t french = Save({"e2e4", "e7e6", "d2d4"});
    const int32_t english = Save({"c2c4"});
    // Leaves the tree after 1.e4 and comes back into it by transposition.
    const int32_t transposed = Save({"g1f3", "c7c5", "e2e4", "d7d6"});
    ASSERT_EQ(OvgGetNumberOfGames(file), 4);

    EXPECT_EQ(Games(nf3, OVK_SCOPE_KEY), (std::vector<int32_t>{najdorfLike, transposed}));
    EXPECT_EQ(Games(e4, OVK_SCOPE_KEY), (std::vector<int32_t>{french}));
    EXPECT_EQ(Games(start, OVK_SCOPE_KEY), (std::vector<int32_t>{english}));
    EXPECT_EQ(Games(e4, OVK_SCOPE_SUBTREE), (std::vector<int32_t>{najdorfLike, french, transposed}));

    sKeyData data;
    ASSERT_EQ(DbsGetKeyDataInfo(e4, &data), 1);
    EXPECT_EQ(std::pair(data.gameCount, data.subtreeGames), std::pair(1, 3));
    EXPECT_EQ(IGGameGetCM(game), 1) << "the buffer is left on its initial position";
}

TEST_F(GameFiling, TheVisitorSeesEachGameUntilItStopsAndMayChangeTheDatabase)
{
    std::vector<int32_t> saved;
    for (int i = 0; i < 3; ++i)
        saved.push_back(Save({"e2e4", "c7c5", "g1f3"}));
    // Stops after the second game; every game in order is the many-games case.
    static std::vector<int32_t> visited;
    const DbsGameVisitor visitor = [](int32_t number) {
        visited.push_back(number);
        return visited.size() < 2 ? 1 : 0;
    };
    EXPECT_EQ(DbsCBSearchKey(nf3, OVK_SEARCH_GAMES, OVK_SCOPE_KEY, visitor), 2);
    EXPECT_EQ(visited, std::vector<int32_t>(saved.begin(), saved.begin() + 2));
    // The buffer still holds 1.e4 c5 2.Nf3: each visit files one more game under the key.
    static uint32_t visitorGame, visitorFile;
    visitorGame = game;
    visitorFile = file;
    const DbsGameVisitor copier = [](int32_t) {
        return OvkSaveToDatabase(visitorGame, visitorFile, 0, 0, 1) > 0 ? 1 : 0;
    };
    EXPECT_EQ(DbsCBSearchKey(nf3, OVK_SEARCH_GAMES, OVK_SCOPE_KEY, copier), 3) << "the visit still ends";
    EXPECT_EQ(Games(nf3, OVK_SCOPE_KEY).size(), 6u);
    const DbsGameVisitor closer = [](int32_t) { return IDCloseBase(0); };
    EXPECT_EQ(DbsCBSearchKey(nf3, OVK_SEARCH_GAMES, OVK_SCOPE_KEY, closer), 1);
    EXPECT_EQ(DbsGetDatabaseDepth(), 0) << "the visitor closed the database";
}

TEST_F(GameFiling, ListsFollowBulkOperations)
{
    ASSERT_EQ(OvgFileAction(file, 1), 1);
    const int32_t first = Save({"d2d4", "d7d5"});
    const int32_t second = Save({"d2d4", "d7d5"});
    EXPECT_EQ(Games(d5, OVK_SCOPE_KEY), (std::vector<int32_t>{})) << "not before the game file commits them";
    ASSERT_EQ(OvgFileAction(file, 0), 1);
    EXPECT_EQ(Games(d5, OVK_SCOPE_KEY), (std::vector<int32_t>{first, second}));
}

TEST_F(GameFiling, OnlyStandardGamesOfTheDatabasesOwnFileAreFiled)
{
    BoardLine line = PlayLine({"e2e4"});
    ASSERT_EQ(NewGameErase(game), 1);
    ASSERT_EQ(BoardToInitialPosition(game, &line.board, line.board.castling, 0, 2), 1);
    EXPECT_GT(OvkSaveToDatabase(game, file, 0, 0, 1), 0) << "a set-up game is stored";
    EXPECT_EQ(Games(0, OVK_SCOPE_SUBTREE), (std::vector<int32_t>{})) << "but not filed";

    EXPECT_NE(IDIsDatabaseGamefile(file), 0);
    const uint32_t other = OvgOpenGamefile((scratch.Path() + "/other.ovg").c_str(), 1);
    ASSERT_NE(other, 0u);
    EXPECT_EQ(IDIsDatabaseGamefile(other) + IDIsDatabaseGamefile(0), 0);
    ASSERT_EQ(NewGameErase(game), 1);
    EXPECT_EQ(OvkSaveToDatabase(game, other, 0, 0, 1), 0);
    EXPECT_EQ(OvgGetNumberOfGames(other), 0);
    EXPECT_EQ(OvkSaveToDatabase(0, file, 0, 0, 1), 0);
    OvgCloseGamefile(other);
}

}  // namespace
