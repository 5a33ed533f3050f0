// Header matching on game buffers of the real game store: what each field
// reads and how each operator compares, one condition at a time.
#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "search/header_match.h"
#include "search/query.h"
#include "search/query_builder.h"
#include "siblings/game_driver.h"

namespace {

struct MatchCase {
    const char* name;
    std::function<void(OvGameBuffer)> setUp;  // on an erased game
    int32_t field;
    int32_t op;
    const char* value;
    int32_t includeDeleted;
    int32_t hit;
};

void Date(OvGameBuffer game, int32_t year, int32_t month, int32_t day)
{
    const int32_t triple[3] = {year, month, day};
    IGGamePutDate(game, triple);
}

void Players(OvGameBuffer game, const char* white, const char* black)
{
    IGGamePutPlayer(game, 0, white);
    IGGamePutPlayer(game, 1, black);
}

// Knights out and back: `plies` half-moves of the main line.
void KnightDance(OvGameBuffer game, int plies)
{
    const MoveXY moves[4] = {{7, 1, 6, 3, 0}, {7, 8, 6, 6, 0}, {6, 3, 7, 1, 0}, {6, 6, 7, 8, 0}};
    for (int ply = 0; ply < plies; ++ply) {
        MoveXY move = moves[ply % 4];
        ASSERT_NE(LegalMove(game, &move), 0);
        ASSERT_EQ(AcceptMove(game, &move), 1);
    }
}

TEST(HeaderMatchOnStore, EachFieldAndOperator)
{
    const auto none = [](OvGameBuffer) {};
    const MatchCase cases[] = {
        {"no date lies before all", none, QfDate, QopBeginsWith, "1900", 0, 1},
        {"month 13 reads as 0", [](OvGameBuffer g) { Date(g, 1997, 13, 5); }, QfDate, QopEquals, "1997", 0, 1},
        {"79 half-moves are 40 moves", [](OvGameBuffer g) { KnightDance(g, 79); }, QfMoves, QopEquals, "40", 0, 1},
        {"Elo 0 is below", none, QfElo, QopBeginsWith, "2000", 0, 1},
        {"u umlaut never fits", [](OvGameBuffer g) { Players(g, "M\x81ller", ""); }, QfWhite, QopEquals, "M\xFCller", 0, 0},
        {"no result is *", none, QfResult, QopEquals, "*", 0, 1},
        {"unknown field", none, 23, QopEquals, "x", 0, 0},
        {"deleted game left out", [](OvGameBuffer g) { IGGamePutStatus(g, OvgStatusDeleted, 1); }, QfResult, QopEquals, "*", 0, 0},
        {"deleted game included", [](OvGameBuffer g) { IGGamePutStatus(g, OvgStatusDeleted, 1); }, QfResult, QopEquals, "*", 1, 1},
    };
    const OvGameBuffer game = IGGameOpenGame();
    ASSERT_NE(game, 0u);
    for (const MatchCase& c : cases) {
        SCOPED_TRACE(c.name);
        NewGameErase(game);
        c.setUp(game);
        sQuery host = MakeQuery(QueryHeader, c.includeDeleted);
        SetCondition(host, 0, 0, c.field, c.op, c.value);
        sQuery prepared;
        int32_t groups = 0;
        int32_t conditions = 0;
        PrepareQuery(&prepared, &host, &groups, &conditions);
        ASSERT_EQ(groups, 1);
        EXPECT_EQ(MatchGame(game, prepared, groups, conditions), c.hit);
    }
    // Without live conditions: every game not deleted, and with deleted games
    // included, none (the empty query is the host's business).
    sQuery prepared = MakeQuery(QueryHeader, 0);
    for (int32_t deleted : {0, 1}) {
        IGGamePutStatus(game, OvgStatusDeleted, deleted);
        prepared.includeDeleted = 0;
        EXPECT_EQ(MatchGame(game, prepared, 0, 0), deleted == 0 ? 1 : 0);
        prepared.includeDeleted = 1;
        EXPECT_EQ(MatchGame(game, prepared, 0, 0), 0);
    }
    IGGameCloseGame(game);
}

}  // namespace
