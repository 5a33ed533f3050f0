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

bool NumberHolds(const sQueryCondition& condition, int32_t number)
{
    return NumberComparators[condition.op](ConditionNumber(condition), number);
}

bool DateHolds(OvGameBuffer game, const sQueryCondition& condition)
{
    const int32_t query = ConditionNumber(condition);
    int32_t packed = 0;
    OvGetHeaderInfoInt(game, HdrDate, &packed);
    if ((query & 0xFF) == 0)
        packed &= ~0xFF;
    if ((query & 0xFF00) == 0)
        packed &= ~0xFF00;
    return NumberComparators[condition.op](query, packed);
}

bool Holds(OvGameBuffer game, int32_t wanted, const sQueryCondition& condition)
{
    switch (condition.field) {
    case 0:
        return true;
    case QfPlayer:
        return EitherSideText(game, wanted, condition, IGGameGetPlayer);
    case QfCountry:
        return EitherSideText(game, wanted, condition, IGGameGetCountry);
    case QfElo:
        return NumberHolds(condition, IGGameGetElo(game, 0)) || NumberHolds(condition, IGGameGetElo(game, 1));
    case QfTitle:
        return EitherSideText(game, wanted, condition, IGGameGetTitle);
    case QfKeycode:
        return SingleText(game, wanted, condition, IGGameGetKeycode);
    case QfResult:
        return ResultMatches(ConditionNumber(condition), IGGameGetResult(game, 0)) == wanted;
    case QfMoves:
        return NumberHolds(condition, (IGGameGetGamelength(game) + 1) / 2);
    case QfPlace:
        return SingleText(game, wanted, condition, IGGameGetPlace);
    case QfSite:
        return SingleText(game, wanted, condition, IGGameGetSite);
    case QfRound:
        return NumberHolds(condition, IGGameGetRound(game));
    case QfDate:
        return DateHolds(game, condition);
    case QfLoadnumber:
        return NumberHolds(condition, IGGameGetSourceLoadnumber(game));
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
        return NumberHolds(condition, IGGameGetElo(game, 0));
    case QfBlackElo:
        return NumberHolds(condition, IGGameGetElo(game, 1));
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
    switch (field) {
    case QfElo:
    case QfResult:
    case QfMoves:
    case QfRound:
    case QfDate:
    case QfLoadnumber:
    case QfWhiteElo:
    case QfBlackElo:
        return 1;
    case QfKeycode:
    case QfPlace:
    case QfSite:
    case QfAnnotator:
    case QfRemark:
    case QfWhite:
    case QfBlack:
    case QfWhiteCountry:
    case QfBlackCountry:
    case QfWhiteTitle:
    case QfBlackTitle:
        return 2;
    case QfPlayer:
    case QfCountry:
    case QfTitle:
        return 4;
    default:
        return 0;
    }
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

int32_t TestCondition(OvGameBuffer game, int32_t wanted, const sQueryCondition& condition)
{
    // A live condition has op 1 to 6; anything else is no condition a game meets.
    if (condition.field != 0 && (condition.op < QopEquals || condition.op > QopNotContains))
        return 0;
    return Holds(game, wanted, condition) ? 1 : 0;
}

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
                tests[count++] = {condition, WantedFor(condition.op)};
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
        while (test != end && TestCondition(game, test->wanted, test->condition) != 0)
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
