// Header matching: what each query field reads from the game store, and how
// each operator compares it.
#include "search/header_match.h"

#include <algorithm>

#include "search/query.h"
#include "siblings/game_driver.h"

namespace {

using TextComparator = int32_t (*)(const char* query, const char* text);
using NumberComparator = bool (*)(int32_t query, int32_t game);

// Indexed by op; entry 0 is never reached, since preparation drops every
// other op.
constexpr TextComparator TextComparators[7] = {
    nullptr, TextEquals, TextEquals, TextBeginsWith, TextBeginsWith, TextContains, TextContains};

constexpr NumberComparator NumberComparators[7] = {
    nullptr,
    [](int32_t query, int32_t game) { return game == query; },
    [](int32_t query, int32_t game) { return game != query; },
    [](int32_t query, int32_t game) { return game < query; },
    [](int32_t query, int32_t game) { return game >= query; },
    [](int32_t query, int32_t game) { return game <= query; },
    [](int32_t query, int32_t game) { return game > query; },
};

using SideTextGetter = const char* (*)(uint32_t game, int32_t side, char* copy);
using TextGetter = const char* (*)(uint32_t game, char* copy);
using Test = MatchPlan::Test;

const char* TextOrEmpty(const char* text) { return text != nullptr ? text : ""; }

bool TextHolds(const Test& test, const char* text)
{
    return TextComparators[test.condition.op](test.condition.value, TextOrEmpty(text)) == test.wanted;
}

template <TextGetter Get>
bool SingleText(OvGameBuffer game, const Test& test)
{
    return TextHolds(test, Get(game, nullptr));
}

template <SideTextGetter Get, int32_t Side>
bool SideText(OvGameBuffer game, const Test& test)
{
    return TextHolds(test, Get(game, Side, nullptr));
}

// Either player fits (odd op), or neither does (even op); Black's text is
// read only when White's does not fit.
template <SideTextGetter Get>
bool EitherSideText(OvGameBuffer game, const Test& test)
{
    const TextComparator compare = TextComparators[test.condition.op];
    const bool one = compare(test.condition.value, TextOrEmpty(Get(game, 0, nullptr))) != 0 ||
                     compare(test.condition.value, TextOrEmpty(Get(game, 1, nullptr))) != 0;
    return (one ? 1 : 0) == test.wanted;
}

bool NumberHolds(const Test& test, int32_t number)
{
    return NumberComparators[test.condition.op](test.number, number);
}

template <int32_t Side>
bool SideElo(OvGameBuffer game, const Test& test)
{
    return NumberHolds(test, IGGameGetElo(game, Side));
}

bool EitherElo(OvGameBuffer game, const Test& test)
{
    return SideElo<0>(game, test) || SideElo<1>(game, test);
}

bool Result(OvGameBuffer game, const Test& test)
{
    return ResultMatches(test.number, IGGameGetResult(game, 0)) == test.wanted;
}

bool Moves(OvGameBuffer game, const Test& test)
{
    return NumberHolds(test, (IGGameGetGamelength(game) + 1) / 2);
}

bool Round(OvGameBuffer game, const Test& test)
{
    return NumberHolds(test, IGGameGetRound(game));
}

bool Loadnumber(OvGameBuffer game, const Test& test)
{
    return NumberHolds(test, IGGameGetSourceLoadnumber(game));
}

bool Date(OvGameBuffer game, const Test& test)
{
    const int32_t query = test.number;
    int32_t packed = 0;
    OvGetHeaderInfoInt(game, HdrDate, &packed);
    if ((query & 0xFF) == 0)
        packed &= ~0xFF;
    if ((query & 0xFF00) == 0)
        packed &= ~0xFF00;
    return NumberHolds(test, packed);
}

bool Never(OvGameBuffer, const Test&) { return false; }

// The check of a live condition: only ops 1 to 6 and fields 1 to 22 can be met.
MatchPlan::Check CheckFor(const sQueryCondition& condition)
{
    if (condition.op < QopEquals || condition.op > QopNotContains)
        return Never;
    switch (condition.field) {
    case QfPlayer: return EitherSideText<IGGameGetPlayer>;
    case QfCountry: return EitherSideText<IGGameGetCountry>;
    case QfElo: return EitherElo;
    case QfTitle: return EitherSideText<IGGameGetTitle>;
    case QfKeycode: return SingleText<IGGameGetKeycode>;
    case QfResult: return Result;
    case QfMoves: return Moves;
    case QfPlace: return SingleText<IGGameGetPlace>;
    case QfSite: return SingleText<IGGameGetSite>;
    case QfRound: return Round;
    case QfDate: return Date;
    case QfLoadnumber: return Loadnumber;
    case QfAnnotator: return SingleText<IGGameGetAnnotator>;
    case QfRemark: return SingleText<IGGameGetRemark>;
    case QfWhite: return SideText<IGGameGetPlayer, 0>;
    case QfBlack: return SideText<IGGameGetPlayer, 1>;
    case QfWhiteCountry: return SideText<IGGameGetCountry, 0>;
    case QfBlackCountry: return SideText<IGGameGetCountry, 1>;
    case QfWhiteElo: return SideElo<0>;
    case QfBlackElo: return SideElo<1>;
    case QfWhiteTitle: return SideText<IGGameGetTitle, 0>;
    case QfBlackTitle: return SideText<IGGameGetTitle, 1>;
    default: return Never;
    }
}

int32_t WantedFor(int32_t op)
{
    return op >= QopEquals && op <= QopNotContains ? WantedResult[op] : 0;
}

// The relative cost of reading a field: none for an unknown one (it never
// holds), little for a number the buffer holds, more for a text, most for the
// texts of both players.
int32_t FieldPrice(int32_t field)
{
    if (field < QfPlayer || field > QfBlackTitle)
        return 0;
    if (FieldValueIsNumber(field))
        return 1;
    return field == QfPlayer || field == QfCountry || field == QfTitle ? 4 : 2;
}

// The relative cost of testing a condition: none when its op makes it fail
// at once, and a walk for a contained text costs more than a comparison from
// the start.
int32_t TestPrice(const sQueryCondition& condition)
{
    if (condition.op < QopEquals || condition.op > QopNotContains)
        return 0;
    const int32_t price = FieldPrice(condition.field);
    return price >= 2 && condition.op >= QopContains ? price + 1 : price;
}

}  // namespace

MatchPlan PlanMatch(const sQuery& prepared, int32_t groupCount, int32_t conditionCount)
{
    MatchPlan plan;
    plan.includeDeleted = prepared.includeDeleted;
    plan.groupCount = std::min(groupCount, int32_t{OV_QUERY_GROUPS});
    const int32_t rows = std::clamp(conditionCount, int32_t{0}, int32_t{OV_QUERY_ROWS});
    for (int32_t group = 0; group < plan.groupCount; ++group) {
        MatchPlan::Test* tests = plan.tests[group];
        int32_t& count = plan.testCounts[group];
        for (int32_t row = 0; row < rows; ++row) {
            const sQueryCondition& condition = prepared.conditions[row][group];
            if (condition.field != 0)  // an empty slot holds for every game
                tests[count++] = {condition, CheckFor(condition), WantedFor(condition.op),
                                  FieldValueIsNumber(condition.field) ? ConditionNumber(condition) : 0};
        }
        std::stable_sort(tests, tests + count, [](const MatchPlan::Test& a, const MatchPlan::Test& b) {
            return TestPrice(a.condition) < TestPrice(b.condition);
        });
    }
    return plan;
}

int32_t MatchPlanned(OvGameBuffer game, const MatchPlan& plan)
{
    if (plan.includeDeleted == 0) {
        if (IGGameGetStatus(game, OvgStatusDeleted) != 0)
            return 0;
        if (plan.groupCount == 0)
            return 1;
    }
    for (int32_t group = 0; group < plan.groupCount; ++group) {
        const MatchPlan::Test* test = plan.tests[group];
        const MatchPlan::Test* end = test + plan.testCounts[group];
        while (test != end && test->check(game, *test))
            ++test;
        if (test == end)
            return 1;
    }
    return 0;
}

int32_t MatchGame(OvGameBuffer game, const sQuery& prepared, int32_t groupCount, int32_t conditionCount)
{
    return MatchPlanned(game, PlanMatch(prepared, groupCount, conditionCount));
}
