// The query record: the empty test, preparation and the date text.
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <tuple>
#include <vector>

#include "chess/position.h"
#include "frame/locale_tables.h"
#include "search/query.h"
#include "search/query_builder.h"

namespace {

struct Prepared {
    sQuery query;
    int32_t groups = -1, conditions = -1;
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

// Every slot from `row` of `group` on is cleared.
void ExpectClearedFrom(const Prepared& prepared, int group, int row)
{
    for (; row < OV_QUERY_ROWS; ++row) {
        const sQueryCondition& slot = prepared.query.conditions[row][group];
        EXPECT_TRUE(slot.field == 0 && slot.value[0] == 0) << "slot " << row << "," << group;
    }
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

    for (uint32_t kind : {uint32_t(QueryKeyGames), uint32_t(QueryKeyMoves), 0u, 0xFFFFFFFFu}) {
        const sQuery other = MakeQuery(kind, 1);
        EXPECT_EQ(OvIsEmptyQuery(&other), kind == QueryKeyGames || kind == QueryKeyMoves ? 0 : 1) << kind;
    }
    EXPECT_EQ(OvIsEmptyQuery(nullptr), 1);
}

TEST(PrepareQuery, PacksLiveConditionsToTheFrontAndCountsTheLongestGroup)
{
    sQuery host = MakeQuery(QueryHeader, 1);
    SetCondition(host, 1, 0, QfWhite, QopEquals, "Alpha\xC4\xE4\xC0");
    SetCondition(host, 4, 0, QfResult, QopEquals, "1-0");
    SetCondition(host, 2, 0, QfWhite, 7, "dropped: op out of range");
    for (int row = 0; row < OV_QUERY_ROWS; ++row)
        SetCondition(host, row, 2, QfElo, QopNotBeginsWith, "2000");
    const sQuery copy = host;
    const Prepared prepared = Prepare(host);
    EXPECT_EQ(std::memcmp(&copy, &host, sizeof host), 0) << "the host's record stays unchanged";
    EXPECT_EQ(std::vector<int32_t>({prepared.groups, prepared.conditions, int32_t(prepared.query.includeDeleted),
                                    prepared.query.conditions[0][0].field, prepared.query.conditions[1][0].field}),
              std::vector<int32_t>({2, OV_QUERY_ROWS, 1, QfWhite, QfResult}));
    // Latin capitals are lowered, the rest translated: A umlaut keeps its case,
    // A grave has no OEM form and becomes the capital without accent.
    EXPECT_STREQ(prepared.query.conditions[0][0].value, "alpha\x8E\x84" "A");
    EXPECT_EQ(NumberAt(prepared, 1, 0), 1);
    ExpectClearedFrom(prepared, 0, 2);
    for (int row = 0; row < OV_QUERY_ROWS; ++row)
        EXPECT_EQ(NumberAt(prepared, row, 1), 2000);
    ExpectClearedFrom(prepared, 2, 0);

    const std::string longest(OV_QUERY_VALUE_SIZE - 1, 'Q');
    SetCondition(host, 0, 0, QfRemark, QopEquals, longest.c_str());
    EXPECT_EQ(std::string(Prepare(host).query.conditions[0][0].value), std::string(longest.size(), 'q'));

    sQuery position = MakeQuery(QueryPosition, 1);
    SetCondition(position, 0, 0, QfPlayer, QopEquals, "Alpha");
    const Prepared none = Prepare(position);
    EXPECT_TRUE(none.groups == 0 && none.conditions == 0 && none.query.includeDeleted == 1)
        << "position queries have no conditions";
    ExpectClearedFrom(none, 0, 0);
}

TEST(PrepareQuery, ReadsEachFormAndDropsWhatCannotBeUsed)
{
    const struct {
        const char* name;
        int32_t field, op;
        const char* text;
        bool live;
        int32_t number;  // the stored number of number, date and result fields
    } cases[] = {
        {"empty player, equals", QfPlayer, QopEquals, "", true, 0},
        {"empty player, begins", QfPlayer, QopBeginsWith, "", false, 0},
        {"op 0", QfPlayer, 0, "Alpha", false, 0},
        {"elo 0 below", QfElo, QopBeginsWith, "0", false, 0},
        {"elo 0 at least", QfElo, QopNotBeginsWith, "0", true, 0},
        {"elo with blanks and sign", QfWhiteElo, QopEquals, "  -25x", true, -25},
        {"elo beyond 32 bits", QfBlackElo, QopEquals, "99999999999", true, INT32_MAX},
        {"result white", QfResult, QopEquals, "1-0", true, 1},
        {"result none", QfResult, QopBeginsWith, "*", true, 0},
        {"date full", QfDate, QopEquals, "12.5.1997", true, 0x07CD050C},
        {"date none below", QfDate, QopBeginsWith, "?", false, 0},
        {"unknown field", 23, QopEquals, "Alpha", true, 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        sQuery host = MakeQuery(QueryHeader);
        SetCondition(host, 0, 1, c.field, c.op, c.text);
        const Prepared prepared = Prepare(host);
        EXPECT_EQ(prepared.groups, c.live ? 1 : 0);
        EXPECT_EQ(prepared.conditions, c.live ? 1 : 0);
        if (!c.live) {
            ExpectClearedFrom(prepared, 0, 0);
        } else if (c.field != QfPlayer && c.field != 23) {
            EXPECT_EQ(NumberAt(prepared, 0, 0), c.number);
        }
    }
}

TEST(QueryDate, ReadsPartsInAnyOrder)
{
    LocaleSource english;
    english.longMonthNames = {"January", "February", "March",     "April",   "May",      "June",
                              "July",    "August",   "September", "October", "November", "December"};
    for (int month = 0; month < 12; ++month)
        english.shortMonthNames[month] = english.longMonthNames[month].substr(0, 3);
    LoadLocaleTables(english);

    const struct {
        const char* text;
        int32_t year, month, day;
    } cases[] = {
        {"97", 1997, 0, 0},           {"1997.05.12", 1997, 5, 12}, {"12.5.97", 1912, 5, 97},
        {"", 0, 0, 0},                {"5.1997", 1997, 5, 0},      {"sept 3 2001", 2001, 9, 3},
        {"Maybe 2001", 2001, 5, 0},   {"1.2.3.4", 1901, 2, 4},     {"99999999999999", INT32_MAX, 0, 0},
    };
    for (const auto& c : cases) {
        int32_t year = -1, month = -1, day = -1;
        EXPECT_EQ(ParseQueryDate(c.text, &year, &month, &day), 1);
        EXPECT_EQ(std::tuple(year, month, day), std::tuple(c.year, c.month, c.day)) << c.text;
    }
}

}  // namespace
