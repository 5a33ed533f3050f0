// Classification against the recording fakes: how far the game is played,
// which positions are looked up, and what the host gets back.
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "fakes/fake_key_calls.h"
#include "fakes/fake_siblings.h"
#include "orvan.h"

namespace {

constexpr OvGameBuffer Game = 1;

class Classification : public testing::Test {
protected:
    void SetUp() override
    {
        ResetFakes();
        ResetKeyFakes();
    }

    // A game of `plies` half-moves standing after `played` of them.
    static void LayOutGame(int32_t plies, int32_t played)
    {
        FakeGame game;
        game.mainLine.resize(size_t(plies), MoveXY{5, 2, 5, 4, 0});
        game.played = played;
        Fakes().games[Game] = game;
    }

    static int Count(const std::string& prefix) { return int(FakeCallsStartingWith(prefix).size()); }

    static std::string FirstPlayMoves()
    {
        const auto calls = FakeCallsStartingWith("PlayMoves");
        return calls.empty() ? "" : calls.front();
    }
};

TEST_F(Classification, GameGoesToTheDeepestAllowedPositionAndWalksBack)
{
    struct Case {
        const char* name;
        int32_t plies, played, depth, maxPly;
        std::map<int32_t, int32_t> keys;
        const char* firstStep;
        int32_t key, reached, lookups;
    };
    const std::map<int32_t, int32_t> opening = {{0, 11}, {2, 15}, {4, 17}};
    const Case cases[] = {
        {"first position only", 10, 0, 30, 0, opening, "PlayMoves(1, 0)", 11, 0, 1},
        {"walks back to a known position", 10, 0, 30, 7, opening, "PlayMoves(1, 7)", 17, 4, 4},
        {"no deeper than the database", 10, 0, 4, 50, opening, "PlayMoves(1, 3)", 15, 2, 2},
        {"a game further on moves back", 10, 8, 30, 2, opening, "PlayMoves(1, -6)", 15, 2, 1},
        {"nothing known ends on the first position", 6, 0, 30, 5, {}, "PlayMoves(1, 5)", 0, 0, 6},
        {"no keys at all", 6, 3, 0, 5, {}, "PlayMoves(1, -4)", 0, 0, 1},
    };
    for (const Case& c : cases) {
        ResetFakes();
        LayOutGame(c.plies, c.played);
        KeyFakes().depth = c.depth;
        KeyFakes().keyAtPly = c.keys;
        int32_t reached = -99;
        EXPECT_EQ(OvClassifyGame(Game, c.maxPly, &reached), c.key) << c.name;
        EXPECT_EQ(reached, c.reached) << c.name;
        EXPECT_EQ(Fakes().games[Game].played, c.reached) << c.name;
        EXPECT_EQ(FirstPlayMoves(), c.firstStep) << c.name;
        EXPECT_EQ(Count("OvkFindPosition"), c.lookups) << c.name;
    }
}

TEST_F(Classification, MovesLooksUpEachPositionWithoutStoppingAtAMiss)
{
    struct Case {
        const char* name;
        int32_t plies, depth, count;
        std::map<int32_t, int32_t> keys;
        int32_t result;
        std::vector<int32_t> places;
        int32_t lookups;
    };
    const Case cases[] = {
        {"three plies look at four positions", 3, 30, 6, {{1, 7}, {3, 9}}, 4, {0, 7, 0, 9, 0, 0}, 4},
        {"no key still counts the first place", 5, 30, 4, {}, 1, {0, 0, 0, 0}, 4},
        {"the depth limits the places", 8, 2, 4, {{2, 5}}, 1, {0, 0, 0, 0}, 2},
        {"count limits the places", 8, 30, 2, {{0, 1}, {1, 2}, {5, 3}}, 2, {1, 2}, 2},
        {"count 0 looks at nothing", 8, 30, 0, {{0, 1}}, 0, {}, 0},
    };
    for (const Case& c : cases) {
        ResetFakes();
        LayOutGame(c.plies, 0);
        KeyFakes().depth = c.depth;
        KeyFakes().keyAtPly = c.keys;
        std::vector<int32_t> places(size_t(c.count) + 1, -1);
        EXPECT_EQ(OvClassifyMoves(Game, places.data(), c.count), c.result) << c.name;
        EXPECT_EQ(std::vector<int32_t>(places.begin(), places.end() - 1), c.places) << c.name;
        EXPECT_EQ(places.back(), -1) << c.name;
        EXPECT_EQ(Count("NewGameRewind"), 1) << c.name;
        EXPECT_EQ(Count("OvkFindPosition"), c.lookups) << c.name;
    }

    // A set-up game has no key by its moves, and is not moved.
    ResetFakes();
    LayOutGame(4, 2);
    Fakes().results["IGGameGetStatus"] = 1;
    std::vector<int32_t> keys = {9, 9, 9};
    EXPECT_EQ(OvClassifyMoves(Game, keys.data(), 3), 0);
    EXPECT_EQ(keys, (std::vector<int32_t>{0, 0, 0}));
    EXPECT_EQ(Fakes().games[Game].played, 2);
}

TEST_F(Classification, PositionLooksUpWithoutMoving)
{
    LayOutGame(4, 2);
    KeyFakes().keyAtPly = {{2, 42}};
    EXPECT_EQ(OvClassifyPosition(Game), 42);
    EXPECT_EQ(Count("PlayMoves"), 0);
    Fakes().games[Game].played = 3;
    EXPECT_EQ(OvClassifyPosition(Game), 0);
}

}  // namespace
