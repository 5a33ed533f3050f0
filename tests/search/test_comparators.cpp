// The comparisons of header matching, on folded query texts and raw game texts.
#include <gtest/gtest.h>

#include "search/header_match.h"

namespace {

struct TextCase {
    const char* query;  // folded already
    const char* text;   // as the store holds it
    int32_t equals, beginsWith, contains;
};

TEST(TextComparators, WalkFoldedGameTextAgainstQuery)
{
    const TextCase cases[] = {
        {"alpha", "Alpha", 1, 1, 1},
        {"alpha", "ALPHA", 1, 1, 1},
        {"alp", "Alpha", 0, 1, 1},
        {"pha", "Alpha", 0, 0, 1},
        {"alphabet", "Alpha", 0, 0, 0},
        {"", "", 1, 1, 0},
        {"", "Alpha", 0, 1, 1},
        {"a", "", 0, 0, 0},
        {"ab", "aab", 0, 0, 1},
        {"bc", "abab", 0, 0, 0},
        {"\xA4", "\xA4", 1, 1, 1},     // n tilde, the same in both
        {"\x81", "\x81", 0, 0, 0},     // u umlaut: the game's byte folds to B0
        {"\x91", "\x91", 1, 1, 1},     // ae, kept on both sides
        {"A", "a", 0, 0, 0},           // a query capital never fits a folded game byte
    };
    for (const TextCase& c : cases) {
        SCOPED_TRACE(std::string("query '") + c.query + "', text '" + c.text + "'");
        EXPECT_EQ(TextEquals(c.query, c.text), c.equals);
        EXPECT_EQ(TextBeginsWith(c.query, c.text), c.beginsWith);
        EXPECT_EQ(TextContains(c.query, c.text), c.contains);
    }
}

TEST(ResultMatches, QueryZeroTakesEveryImproperResult)
{
    struct Case {
        int32_t query, game, expected;
    };
    const Case cases[] = {{1, 1, 1}, {2, 2, 1}, {3, 3, 1}, {1, 3, 0}, {3, 2, 0}, {0, 0, 1},
                          {0, 4, 1}, {0, -1, 1}, {0, 1, 0}, {0, 2, 0}, {0, 3, 0}, {2, 0, 0}};
    for (const Case& c : cases)
        EXPECT_EQ(ResultMatches(c.query, c.game), c.expected) << c.query << " against " << c.game;
}

}  // namespace
