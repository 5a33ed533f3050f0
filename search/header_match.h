// The test of one game's header against a prepared query: conditions of a
// group joined by AND, groups by OR, texts compared as the game store holds
// them (code page 437) after folding the game's side through HeaderFoldTable.
#ifndef ORVAN_SEARCH_HEADER_MATCH_H
#define ORVAN_SEARCH_HEADER_MATCH_H

#include <cstdint>

#include "header/code_pages.h"
#include "orvan.h"

// Folds a game's text byte: Latin capitals to small letters, control bytes and
// 7F to 90, 93 to 9F to B0, which no folded query byte equals.
extern const CodePageTable HeaderFoldTable;

// Comparisons of a folded query text with a game's text; 1 or 0.
int32_t TextEquals(const char* query, const char* text);
int32_t TextBeginsWith(const char* query, const char* text);
int32_t TextContains(const char* query, const char* text);  // 0 for an empty game text

// Two driver result codes: 1 when equal, or when the query's is 0 and the
// game's is not 1, 2 or 3.
int32_t ResultMatches(int32_t query, int32_t game);

// What a text or result comparison must give for operator `op` to hold.
inline constexpr int32_t WantedResult[7] = {0, 1, 0, 1, 0, 1, 0};

// A prepared query laid out for testing many games: the live conditions of
// each group with the result their operator wants, cheapest test first (the
// order of an AND group does not change its outcome).
struct MatchPlan {
    struct Test;
    // Reads the condition's field from the game and compares it.
    using Check = bool (*)(OvGameBuffer game, const Test& test);
    struct Test {
        sQueryCondition condition;
        Check check;
        int32_t wanted;  // WantedResult[op]
        int32_t number;  // the value of a number, date or result condition
    };
    Test tests[OV_QUERY_GROUPS][OV_QUERY_ROWS];
    int32_t testCounts[OV_QUERY_GROUPS] = {};
    int32_t groupCount = 0;
    int32_t includeDeleted = 0;
};

// The plan of a query from PrepareQuery with its group and condition counts.
MatchPlan PlanMatch(const sQuery& prepared, int32_t groupCount, int32_t conditionCount);

// 1 when the game (header loaded) is a hit for the planned query.
int32_t MatchPlanned(OvGameBuffer game, const MatchPlan& plan);

// 1 when the game (header loaded) is a hit for the prepared query.
int32_t MatchGame(OvGameBuffer game, const sQuery& prepared, int32_t groupCount, int32_t conditionCount);

#endif
