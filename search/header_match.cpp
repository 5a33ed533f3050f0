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

const char* TextOrEmpty(const char* text) { return text != nullptr ? text : ""; }

bool TextHolds(int32_t wanted, const sQueryCondition& condition, const char* text)
{
    return TextComparators[condition.op](condition.value, TextOrEmpty(text)) == wanted;
}

bool SingleText(OvGameBuffer game, int32_t wanted, const sQueryCondition& condition, TextGetter getter)
{
    return TextHolds(wanted, condition, getter(game, nullptr));
}

bool SideText(OvGameBuffer game, int32_t wanted, const sQueryCondition& condition, SideTextGetter getter, int32_t side)
{
    return TextHolds(wanted, condition, getter(game, side, nullptr));
}

// Either player fits (odd op), or neither does (even op); Black's text is
// read only when White's does not fit.
bool EitherSideText(OvGameBuffer game, int32_t wanted, const sQueryCondition& condition, SideTextGetter getter)
{
    const TextComparator compare = TextComparators[condition.op];
    const bool one = compare(condition.value, TextOrEmpty(getter(game, 0, nullptr))) != 0 ||
                     compare(condition.value, TextOrEmpty(getter(game, 1, nullptr))) != 0;
    return (one ? 1 : 0) == wanted;
}

bool NumberHolds(const MatchPlan::Test& test, int32_t number)
{
    return NumberComparators[test.condition.op](test.number, number);
}

bool DateHolds(OvGameBuffer game, const MatchPlan::Test& test)
{
    const int32_t query = test.number;
    int32_t packed = 0;
    OvGetHeaderInfoInt(game, HdrDate, &packed);
    if ((query & 0xFF) == 0)
        packed &= ~0xFF;
    if ((query & 0xFF00) == 0)
        packed &= ~0xFF00;
    return NumberComparators[test.condition.op](query, packed);
}

// Whether the game meets one planned test: only ops 1 to 6 and fields 1 to 22
// can be met.
bool Holds(OvGameBuffer game, const MatchPlan::Test& test)
{
    const sQueryCondition& condition = test.condition;
    const int32_t wanted = test.wanted;
    if (condition.op < QopEquals || condition.op > QopNotContains)
        return false;
    switch (condition.field) {
    case QfPlayer:
        return EitherSideText(game, wanted, condition, IGGameGetPlayer);
    case QfCountry:
        return EitherSideText(game, wanted, condition, IGGameGetCountry);
    case QfElo:
        return NumberHolds(test, IGGameGetElo(game, 0)) || NumberHolds(test, IGGameGetElo(game, 1));
    case QfTitle:
        return EitherSideText(game, wanted, condition, IGGameGetTitle);
    case QfKeycode:
        return SingleText(game, wanted, condition, IGGameGetKeycode);
    case QfResult:
        return ResultMatches(test.number, IGGameGetResult(game, 0)) == wanted;
    case QfMoves:
        return NumberHolds(test, (IGGameGetGamelength(game) + 1) / 2);
    case QfPlace:
        return SingleText(game, wanted, condition, IGGameGetPlace);
    case QfSite:
        return SingleText(game, wanted, condition, IGGameGetSite);
    case QfRound:
        return NumberHolds(test, IGGameGetRound(game));
    case QfDate:
        return DateHolds(game, test);
    case QfLoadnumber:
        return NumberHolds(test, IGGameGetSourceLoadnumber(game));
    case QfAnnotator:
        return SingleText(game, wanted, condition, IGGameGetAnnotator);
    case QfRemark:
        return SingleText(game, wanted, condition, IGGameGetRemark);
    case QfWhite:
        return SideText(game, wanted, condition, IGGameGetPlayer, 0);
    case QfBlack:
        return SideText(game, wanted, condition, IGGameGetPlayer, 1);
    case QfWhiteCountry:
        return SideText(game, wanted, condition, IGGameGetCountry, 0);
    case QfBlackCountry:
        return SideText(game, wanted, condition, IGGameGetCountry, 1);
    case QfWhiteElo:
        return NumberHolds(test, IGGameGetElo(game, 0));
    case QfBlackElo:
        return NumberHolds(test, IGGameGetElo(game, 1));
    case QfWhiteTitle:
        return SideText(game, wanted, condition, IGGameGetTitle, 0);
    case QfBlackTitle:
        return SideText(game, wanted, condition, IGGameGetTitle, 1);
    default:
        return false;
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
                tests[count++] = {condition, WantedFor(condition.op),
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
        while (test != end && Holds(game, *test))
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
