// The corpus imported into a new game file, exported and read again is the original, apart from
// the store's forms: glyphs ahead of the first move are lost, comments lose blanks at their ends,
// tags pass through code page 437.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "header/code_pages.h"
#include "pgn/pgn_game.h"
#include "siblings/game_driver.h"
#include "store_helpers.h"
#include "support/corpus.h"
#include "support/read_games.h"

namespace {

std::string ThroughStoreCodePage(const std::string& ansi)
{
    char oem[PGN_TAG_SIZE], back[PGN_TAG_SIZE];
    AnsiToOemCopy(oem, ansi.c_str(), sizeof oem);
    OemToAnsiCopy(back, oem, sizeof back);
    return back;
}

// Whether `exported` is `original` as it comes back.
bool SameGame(const ReadGame& original, const ReadGame& exported, size_t number)
{
    ReadGame expected = original;
    expected.nags.erase(0);
    for (auto& [index, comment] : expected.comments) {
        const size_t first = comment.find_first_not_of(' ');
        comment = first == std::string::npos ? "" : comment.substr(first, comment.find_last_not_of(' ') + 1 - first);
    }
    for (int32_t tag : {TagWhite, TagBlack, TagEvent})
        expected.tags[tag - 1] = ThroughStoreCodePage(expected.tags[tag - 1]);
    expected.resultToken = std::max(expected.resultToken, 0);

    const auto summary = [](const ReadGame& game) {
        return game.Record() + " result " + std::to_string(game.resultToken) + " " + game.Tag(TagWhite) + "|" +
               game.Tag(TagBlack) + "|" + game.Tag(TagEvent) + "|" + game.Tag(TagEco);
    };
    EXPECT_EQ(summary(exported), summary(expected)) << "game " << number;
    return summary(exported) == summary(expected);
}

int32_t StopAtLimit(uint32_t gamesWritten, intptr_t limit) { return gamesWritten < size_t(limit) ? 1 : 0; }

int32_t CountUp(intptr_t counter)
{
    auto& [next, last] = *reinterpret_cast<std::pair<int32_t, int32_t>*>(counter);
    return next < last ? ++next : 0;
}

TEST(RoundTrip, SelfPlayCorpus)
{
    if (!std::filesystem::exists(CorpusPath))
        GTEST_SKIP() << CorpusPath << " is not there";
    const std::vector<ReadGame> original = ReadGamesOfFile(CorpusPath, CorpusGameLimit);
    ScratchPath gamefile("round_trip.ovg"), exported("round_trip.pgn");
    const OvGameFile file = OvCreateGamefile(gamefile.c_str());
    ASSERT_NE(file, 0u);
    OvStartBulkOperation(file, OV_BULK_WRITE);
    EXPECT_EQ(OvPgnImport(CorpusPath, file, 0, "NBRQK", StopAtLimit, static_cast<intptr_t>(original.size())), 0);
    OvEndBulkOperation(file);
    std::pair<int32_t, int32_t> counter{0, OvGetGamesCount(file)};
    EXPECT_EQ(counter.second, static_cast<int32_t>(original.size()));
    EXPECT_EQ(OvExportGames(exported.c_str(), file, CountUp, 0, reinterpret_cast<intptr_t>(&counter)), counter.second);
    OvCloseGamefile(file);

    const std::vector<ReadGame> reread = ReadGamesOfFile(exported.str());
    EXPECT_EQ(reread.size(), original.size());
    size_t differences = 0, variations = 0, glyphs = 0, comments = 0;
    for (size_t i = 0; i < std::min(original.size(), reread.size()) && differences < 10; ++i)
        differences += SameGame(original[i], reread[i], i + 1) ? 0 : 1;
    for (const ReadGame& game : original) {
        variations += game.treeCount > game.moveCount ? 1 : 0;
        glyphs += game.nags.size();
        comments += game.comments.size();
    }
    EXPECT_GT(variations, 0u);  // the file has all three to carry
    EXPECT_GT(glyphs, 0u);
    EXPECT_GT(comments, 0u);
}

}  // namespace
