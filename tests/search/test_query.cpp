// The query record: the empty test, preparation and the date text.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "chess/position.h"
#include "frame/locale_tables.h"
#include "search/query.h"
#include "search/query_builder.h"

namespace {

struct Prepared {
    sQuery query;
    int32_t groups = -1;
    int32_t conditions = -1;
};

Prepared Prepare(const sQuery& host)
{
    Prepared prepared;
    std::memset(&prepared.query, 0x5A, sizeof prepared.query);  // garbage that must be overwritten
    EXPECT_EQ(PrepareQuery(&prepared.query, &host, &prepared.groups, &prepared.conditions), 1);
    return prepared;
}

int32_t NumberAt(const Prepared& prepared, int row, int group)
{
    return ConditionNumber(prepared.query.conditions[row][group]);
}

void ExpectCleared(const Prepared& prepared, int row, int group)
{
    SCOPED_TRACE("slot " + std::to_string(row) + "," + std::to_string(group));
    EXPECT_EQ(prepared.query.conditions[row][group].field, 0);
    EXPECT_EQ(prepared.query.conditions[row][group].value[0], '\0');
}

TEST(EmptyQuery, AnswersByKindBoardAndConditions)
{
    sQuery header = MakeQuery(QueryHeader, 0);
    EXPECT_EQ(OvIsEmptyQuery(&header), 0) << "selects every game not deleted";
    header.includeDeleted = 1;
    EXPECT_EQ(OvIsEmptyQuery(&header), 1);
    SetCondition(header, 0, 0, QfPlayer, QopBeginsWith, "");
    EXPECT_EQ(OvIsEmptyQuery(&header), 1) << "an empty text with op 3 is no condition";
    SetCondition(header, 0, 0, QfPlayer, QopNotEquals, "");
    EXPECT_EQ(OvIsEmptyQuery(&header), 0) << "op 2 on an empty text asks for a player";
    SetCondition(header, 0, 0, 0, QopEquals, "Alpha");
    EXPECT_EQ(OvIsEmptyQuery(&header), 1) << "field 0 is unused";
    SetCondition(header, 4, 2, QfElo, 0, "0");
    EXPECT_EQ(OvIsEmptyQuery(&header), 0) << "the raw record counts, not what preparation keeps";

    sQuery position = MakeQuery(QueryPosition, 0);
    EXPECT_EQ(OvIsEmptyQuery(&position), 0);
    position.includeDeleted = 1;
    EXPECT_EQ(OvIsEmptyQuery(&position), 1);
    position.position.board[63] = OV_BLACK_KING;
    EXPECT_EQ(OvIsEmptyQuery(&position), 0);

    for (uint32_t kind : {QueryKeyGames, QueryKeyMoves}) {
        const sQuery key = MakeQuery(kind, 1);
        EXPECT_EQ(OvIsEmptyQuery(&key), 0) << kind;
    }
    for (uint32_t kind : {0u, 3u, 8u, 0xFFFFFFFFu}) {
        const sQuery other = MakeQuery(kind, 0);
        EXPECT_EQ(OvIsEmptyQuery(&other), 1) << kind;
    }
    EXPECT_EQ(OvIsEmptyQuery(nullptr), 1);
}

TEST(PrepareQuery, PacksLiveConditionsToTheFront)
{
    sQuery host = MakeQuery(QueryHeader);
    SetCondition(host, 1, 2, QfWhite, QopEquals, "Alpha");
    SetCondition(host, 4, 2, QfResult, QopEquals, "1-0");
    SetCondition(host, 2, 2, QfWhite, 7, "dropped: op out of range");
    const sQuery copy = host;
    const Prepared prepared = Prepare(host);
    EXPECT_EQ(std::memcmp(&copy, &host, sizeof host), 0) << "the host's record stays unchanged";
    EXPECT_EQ(prepared.groups, 1);
    EXPECT_EQ(prepared.conditions, 2);
    EXPECT_EQ(prepared.query.includeDeleted, 0);
    EXPECT_EQ(prepared.query.conditions[0][0].field, QfWhite);
    EXPECT_STREQ(prepared.query.conditions[0][0].value, "alpha");
    EXPECT_EQ(prepared.query.conditions[1][0].field, QfResult);
    EXPECT_EQ(NumberAt(prepared, 1, 0), 1);
    for (int row = 2; row < OV_QUERY_ROWS; ++row)
        ExpectCleared(prepared, row, 0);
    for (int group = 1; group < OV_QUERY_GROUPS; ++group)
        for (int row = 0; row < OV_QUERY_ROWS; ++row)
            ExpectCleared(prepared, row, group);
}

TEST(PrepareQuery, CountsGroupsAndTheLongestGroup)
{
    sQuery host = MakeQuery(QueryHeader, 1);
    SetCondition(host, 0, 0, QfSite, QopContains, "x");
    SetCondition(host, 3, 0, QfRound, QopEquals, "3");
    for (int row = 0; row < OV_QUERY_ROWS; ++row)
        SetCondition(host, row, 2, QfElo, QopNotBeginsWith, "2000");
    const Prepared prepared = Prepare(host);
    EXPECT_EQ(prepared.groups, 2);
    EXPECT_EQ(prepared.conditions, 5);
    EXPECT_EQ(prepared.query.includeDeleted, 1);
    EXPECT_EQ(prepared.query.conditions[1][0].field, QfRound);
    for (int row = 2; row < OV_QUERY_ROWS; ++row)
        ExpectCleared(prepared, row, 0);
    for (int row = 0; row < OV_QUERY_ROWS; ++row)
        EXPECT_EQ(NumberAt(prepared, row, 1), 2000);
    for (int row = 0; row < OV_QUERY_ROWS; ++row)
        ExpectCleared(prepared, row, 2);
}

struct ConditionCase {
    const char* name;
    int32_t field;
    int32_t op;
    const char* text;
    bool live;
    int32_t number;  // the stored number of number, date and result fields
};

TEST(PrepareQuery, ReadsEachFormAndDropsWhatCannotBeUsed)
{
    const ConditionCase cases[] = {
        {"empty player, equals", QfPlayer, QopEquals, "", true, 0},
        {"empty player, not equals", QfPlayer, QopNotEquals, "", true, 0},
        {"empty player, begins", QfPlayer, QopBeginsWith, "", false, 0},
        {"empty player, not contains", QfPlayer, QopNotContains, "", false, 0},
        {"op 0", QfPlayer, 0, "Alpha", false, 0},
        {"op 7", QfPlayer, 7, "Alpha", false, 0},
        {"elo 0 below", QfElo, QopBeginsWith, "0", false, 0},
        {"elo 0 at least", QfElo, QopNotBeginsWith, "0", true, 0},
        {"elo no digits", QfElo, QopEquals, "abc", true, 0},
        {"elo with blanks and sign", QfWhiteElo, QopEquals, "  -25x", true, -25},
        {"elo beyond 32 bits", QfBlackElo, QopEquals, "99999999999", true, INT32_MAX},
        {"moves", QfMoves, QopEquals, "40", true, 40},
        {"load number", QfLoadnumber, QopBeginsWith, "12", true, 12},
        {"result white", QfResult, QopEquals, "1-0", true, 1},
        {"result draw", QfResult, QopEquals, "1/2-1/2", true, 2},
        {"result short draw", QfResult, QopEquals, "1/2", true, 2},
        {"result black", QfResult, QopEquals, "0-1", true, 3},
        {"result none", QfResult, QopBeginsWith, "*", true, 0},
        {"result empty", QfResult, QopNotContains, "", true, 0},
        {"result op 0", QfResult, 0, "1-0", false, 0},
        {"date year", QfDate, QopEquals, "1997", true, 0x07CD0000},
        {"date full", QfDate, QopEquals, "12.5.1997", true, 0x07CD050C},
        {"date none below", QfDate, QopBeginsWith, "?", false, 0},
        {"date none equals", QfDate, QopEquals, "", true, 0},
        {"unknown field", 23, QopEquals, "Alpha", true, 0},
    };
    for (const ConditionCase& c : cases) {
        SCOPED_TRACE(c.name);
        sQuery host = MakeQuery(QueryHeader);
        SetCondition(host, 0, 1, c.field, c.op, c.text);
        const Prepared prepared = Prepare(host);
        EXPECT_EQ(prepared.groups, c.live ? 1 : 0);
        EXPECT_EQ(prepared.conditions, c.live ? 1 : 0);
        if (c.live && (c.field == QfElo || c.field == QfWhiteElo || c.field == QfBlackElo || c.field == QfMoves ||
                       c.field == QfLoadnumber || c.field == QfResult || c.field == QfDate)) {
            EXPECT_EQ(NumberAt(prepared, 0, 0), c.number);
        }
        if (!c.live)
            ExpectCleared(prepared, 0, 0);
    }
}

TEST(PrepareQuery, PositionQueriesHaveNoConditions)
{
    sQuery host = MakeQuery(QueryPosition, 1);
    SetCondition(host, 0, 0, QfPlayer, QopEquals, "Alpha");
    const Prepared prepared = Prepare(host);
    EXPECT_EQ(prepared.groups, 0);
    EXPECT_EQ(prepared.conditions, 0);
    EXPECT_EQ(prepared.query.includeDeleted, 1);
    for (int group = 0; group < OV_QUERY_GROUPS; ++group)
        for (int row = 0; row < OV_QUERY_ROWS; ++row)
            ExpectCleared(prepared, row, group);
}

TEST(QueryFoldTable, LowersLatinCapitalsAndTranslatesTheRest)
{
    EXPECT_EQ(QueryFoldTable['A'], 'a');
    EXPECT_EQ(QueryFoldTable['Z'], 'z');
    EXPECT_EQ(QueryFoldTable['a'], 'a');
    EXPECT_EQ(QueryFoldTable['1'], '1');
    EXPECT_EQ(QueryFoldTable[0xE4], 0x84) << "a umlaut is translated, not folded";
    EXPECT_EQ(QueryFoldTable[0xC4], 0x8E) << "A umlaut keeps its case";
    EXPECT_EQ(QueryFoldTable[0xC0], 0x41) << "no OEM form: the capital without accent";
    EXPECT_EQ(QueryFoldTable[0xE3], 0x61);
    for (int byte = 0; byte < 256; ++byte)
        EXPECT_NE(QueryFoldTable[byte], 0xB0) << byte;

    sQuery host = MakeQuery(QueryHeader);
    const std::string longest(OV_QUERY_VALUE_SIZE - 1, 'Q');
    SetCondition(host, 0, 0, QfRemark, QopEquals, longest.c_str());
    const Prepared prepared = Prepare(host);
    EXPECT_EQ(std::string(prepared.query.conditions[0][0].value), std::string(longest.size(), 'q'));
}

TEST(QueryDate, ReadsPartsInAnyOrder)
{
    LocaleSource english;
    english.longMonthNames = {"January", "February", "March", "April", "May", "June",
                              "July", "August", "September", "October", "November", "December"};
    for (int month = 0; month < 12; ++month)
        english.shortMonthNames[month] = english.longMonthNames[month].substr(0, 3);
    LoadLocaleTables(english);

    struct Case {
        const char* text;
        int32_t year, month, day;
    };
    const Case cases[] = {
        {"1997", 1997, 0, 0},          {"97", 1997, 0, 0},          {"1997.05.12", 1997, 5, 12},
        {"97.5.12", 1997, 5, 12},      {"12.5.1997", 1997, 5, 12},  {"12.5.97", 1912, 5, 97},
        {"May 1997", 1997, 5, 0},      {"12 May 1997", 1997, 5, 12}, {"May 12 1997", 1997, 5, 12},
        {"1997 May 12", 1997, 5, 12},  {"12 May 97", 1912, 5, 97},  {"", 0, 0, 0},
        {"5.1997", 1997, 5, 0},        {"sept 3 2001", 2001, 9, 3}, {"SEPTEMBER 2001", 2001, 9, 0},
        {"Maybe 2001", 2001, 5, 0},    {"1.2.3.4", 1901, 2, 4},        {"0", 0, 0, 0},
        {"99999999999999", INT32_MAX, 0, 0},
    };
    for (const Case& c : cases) {
        int32_t year = -1, month = -1, day = -1;
        EXPECT_EQ(ParseQueryDate(c.text, &year, &month, &day), 1);
        EXPECT_EQ(year, c.year) << c.text;
        EXPECT_EQ(month, c.month) << c.text;
        EXPECT_EQ(day, c.day) << c.text;
    }
}

}  // namespace
