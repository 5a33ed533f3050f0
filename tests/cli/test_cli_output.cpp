// The host's output helpers: game counting of PGN input and tables of UTF-8 text.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include "cli/pgn_source.h"
#include "cli/table.h"

namespace {

using namespace orvan_cli;

TEST(CliPgnGameCounter, CountsTagSectionsWhereverThePiecesSplit)
{
    const struct {
        std::string text;
        int64_t games;
    } cases[] = {
        {"[Event \"a\"]\n[White \"b\"]\n\n1. e4 *\n\n[Event \"c\"]\n\n1. d4 *\n", 2},
        {"[Event \"a\"]\n1. e4 *\n[Event \"b\"]\n1. d4 *\n", 2},           // no blank lines
        {"[Event \"a\"]\n\n1. e4 {a comment\n[not a tag]\n} e5 *\n", 1},  // a bracket inside a comment
        {"  [Event \"a\"]\r\n\r\n1. e4 *\r\n", 1},                         // indented, CR LF
        {"", 0},
    };
    for (const auto& c : cases) {
        for (size_t split = 0; split <= c.text.size(); ++split) {
            PgnGameCounter counter;
            counter.Feed(std::string_view(c.text).substr(0, split));
            counter.Feed(std::string_view(c.text).substr(split));
            EXPECT_EQ(counter.Count(), c.games) << c.text << " split at " << split;
        }
    }
}

TEST(CliTable, ColumnsLineUpByCharactersNotBytes)
{
    const Table table{{"White", "Elo"}, {{"M\xC3\xBCller", "2500"}, {"Tal", "2700"}}};
    char* printed = nullptr;
    size_t size = 0;
    std::FILE* out = open_memstream(&printed, &size);
    PrintTable(out, table);
    std::fclose(out);
    const std::string text(printed, size);
    std::free(printed);
    EXPECT_EQ(text,
              "White   Elo\n"
              "------  ----\n"
              "M\xC3\xBCller  2500\n"
              "Tal     2700\n");
}

}  // namespace
