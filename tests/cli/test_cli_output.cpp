// The host's files and output: game counting of PGN input, files written
// under a temporary name, and tables of UTF-8 text.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include "cli/cli_error.h"
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

TEST_F(CliFiles, PgnSourceConvertsUtf8AndPassesWindows1252On)
{
    const fs::path utf8 = dir_ / "utf8.pgn", cp1252 = dir_ / "cp1252.pgn";
    std::ofstream(utf8, std::ios::binary) << "[White \"M\xC3\xBCller\"]\n\n1. e4 *\n";
    std::ofstream(cp1252, std::ios::binary) << "[White \"M\xFCller\"]\n\n1. e4 *\n";

    const PgnSource fromUtf8(utf8.string(), Encoding::Auto);
    EXPECT_EQ(fromUtf8.Found(), Encoding::Utf8);
    EXPECT_NE(fromUtf8.LibraryPath(), utf8.string());
    EXPECT_EQ(ReadFile(fromUtf8.LibraryPath()), ReadFile(cp1252));
    EXPECT_EQ(fromUtf8.GameCount(), 1);

    const PgnSource from1252(cp1252.string(), Encoding::Auto);
    EXPECT_EQ(from1252.Found(), Encoding::Windows1252);
    EXPECT_EQ(from1252.LibraryPath(), cp1252.string());

    try {
        PgnSource missing((dir_ / "missing.pgn").string(), Encoding::Auto);
        ADD_FAILURE() << "a missing file was accepted";
    } catch (const CliError& error) {
        EXPECT_EQ(error.Code(), kExitBadInput);
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
