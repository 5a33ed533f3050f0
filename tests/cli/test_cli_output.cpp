// The host's files and output: game counting of PGN input, files written
// under a temporary name, and tables of UTF-8 text.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include "cli/pgn_source.h"
#include "cli/table.h"
#include "cli/temp_file.h"

namespace {

using namespace orvan_cli;
namespace fs = std::filesystem;

std::string ReadFile(const fs::path& path)
{
    std::ifstream in(path, std::ios::binary);
    std::stringstream text;
    text << in.rdbuf();
    return text.str();
}

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
        {"1. e4 e5 *\n", 0},                                                // movetext alone has no tags
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

class CliFiles : public ::testing::Test {
protected:
    void SetUp() override
    {
        dir_ = fs::temp_directory_path() / ("orvan-cli-files-" + std::to_string(::getpid()));
        fs::create_directories(dir_);
    }
    void TearDown() override { fs::remove_all(dir_); }
    fs::path dir_;
};

TEST_F(CliFiles, TempFileAppearsOnlyWhenCommitted)
{
    const std::string target = (dir_ / "out.pgn").string();
    {
        TempFile file(target);
        file.Write("half");
        EXPECT_TRUE(fs::exists(file.Path()));
    }
    EXPECT_TRUE(fs::is_empty(dir_)) << "an abandoned file is removed";
    {
        TempFile file(target);
        file.Write("whole");
        file.Commit();
    }
    EXPECT_EQ(ReadFile(target), "whole");
    EXPECT_EQ(std::distance(fs::directory_iterator(dir_), fs::directory_iterator()), 1);
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
