// Real PGN files end to end: every game imported into a new game file,
// exported, and the exported text read again gives the same games as the
// original text, apart from the differences the two forms of storage make:
//  - glyphs ahead of the first move are not read back from the store;
//  - two glyphs of one move are stored as one text without separator, so a
//    pair of numbers runs together ("$14 $15" is "1415"), and a pair of
//    symbols can read as another symbol ("! ?" is "!?");
//  - a move comment that needs more than the store's comment block as lines
//    is left out, and so is what a root comment has beyond that block;
//  - tag texts pass through code page 437 and back, which is lossy for some
//    letters.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include "header/code_pages.h"
#include "pgn/pgn_game.h"
#include "pgn/read/game_builder.h"
#include "pgn/read/nag_symbols.h"
#include "pgn_snapshot.h"
#include "siblings/game_driver.h"

namespace {

#if defined(__SANITIZE_ADDRESS__)
constexpr size_t GameLimit = 1500;
#else
constexpr size_t GameLimit = SIZE_MAX;
#endif

const char* GlyphText(uint8_t nag)
{
    for (const NagSymbol& symbol : NagSymbols) {
        if (symbol.nag == nag)
            return symbol.symbol;
    }
    return nullptr;
}

bool IsMark(char c)
{
    return c == '!' || c == '?';
}

// Whether the two glyphs of one move read back as they were.
bool GlyphPairSurvives(uint16_t nags)
{
    const auto first = static_cast<uint8_t>(nags & 0xFF);
    const auto second = static_cast<uint8_t>(nags >> 8);
    if (second == 0)
        return true;
    const char* firstText = GlyphText(first);
    const char* secondText = GlyphText(second);
    if (firstText == nullptr && secondText == nullptr)
        return false;
    return firstText == nullptr || secondText == nullptr ||
           !(IsMark(firstText[std::strlen(firstText) - 1]) && IsMark(secondText[0]));
}

std::string ThroughStoreCodePage(const std::string& ansi)
{
    char oem[PGN_TAG_SIZE];
    char back[PGN_TAG_SIZE];
    AnsiToOemCopy(oem, ansi.c_str(), sizeof oem);
    OemToAnsiCopy(back, oem, sizeof back);
    return back;
}

std::string Trimmed(const std::string& text)
{
    const size_t first = text.find_first_not_of(' ');
    return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

// A comment that the builder may have to leave out: its lines, each with a
// terminator and possibly a blank, may not fit the block.
bool MayBeTooLong(const std::string& comment, uint32_t index)
{
    if (index == 0)  // one line, behind the count of lines
        return comment.size() + sizeof(uint16_t) + 1 > OvgLongCommentBlockSize;
    const size_t lines = comment.size() / CommentLineLength + 1;
    return comment.size() + 2 * lines >= CommentBlockSize;
}

// Everything of `original` that the round trip keeps, as it comes back.
GameSnapshot Expected(const GameSnapshot& original)
{
    GameSnapshot expected = original;
    expected.nags.erase(0);
    std::erase_if(expected.nags, [](const auto& entry) { return !GlyphPairSurvives(entry.second); });
    for (auto& [index, comment] : expected.comments)
        comment = Trimmed(comment);
    for (int32_t tag : {TagWhite, TagBlack, TagEvent})
        expected.tags[tag - 1] = ThroughStoreCodePage(expected.tags[tag - 1]);
    expected.resultToken = std::max(expected.resultToken, 0);
    return expected;
}

// Compares one game; returns false (after reporting) on a difference.
bool SameGame(const GameSnapshot& original, const GameSnapshot& exported, size_t number)
{
    GameSnapshot expected = Expected(original);
    GameSnapshot actual = exported;
    for (auto it = expected.comments.begin(); it != expected.comments.end();) {
        const bool lost = actual.comments.count(it->first) == 0;
        it = lost && MayBeTooLong(it->second, it->first) ? expected.comments.erase(it) : std::next(it);
    }
    // Two glyphs that ran together leave a trace of their own: compare only
    // the entries on which both sides agree that glyphs survive.
    for (const auto& [index, nags] : original.nags) {
        if (!GlyphPairSurvives(nags))
            actual.nags.erase(index);
    }
    const bool same = actual.moves == expected.moves && actual.moveCount == expected.moveCount &&
                      actual.treeCount == expected.treeCount &&
                      actual.firstMoveNumber == expected.firstMoveNumber &&
                      std::memcmp(&actual.position, &expected.position, sizeof(sPosition)) == 0 &&
                      actual.nags == expected.nags && actual.comments == expected.comments &&
                      actual.resultToken == expected.resultToken;
    bool sameTags = true;
    for (int32_t tag : {TagWhite, TagBlack, TagEvent, TagEco})
        sameTags = sameTags && actual.tags[tag - 1] == expected.tags[tag - 1];
    EXPECT_TRUE(same) << "game " << number << ": moves " << actual.moves.size() << " against "
                      << expected.moves.size() << ", glyph entries " << actual.nags.size() << " against "
                      << expected.nags.size() << ", comments " << actual.comments.size()
                      << " against " << expected.comments.size();
    EXPECT_TRUE(sameTags) << "game " << number << ": White " << actual.Tag(TagWhite) << " against "
                          << expected.Tag(TagWhite);
    return same && sameTags;
}

struct Stop {
    size_t after;
};

int32_t StopAfter(uint32_t gamesWritten, intptr_t userData)
{
    return gamesWritten < reinterpret_cast<Stop*>(userData)->after ? 1 : 0;
}

struct Counter {
    int32_t next = 0;
    int32_t last;
};

int32_t CountUp(intptr_t userData)
{
    auto& counter = *reinterpret_cast<Counter*>(userData);
    return counter.next < counter.last ? ++counter.next : 0;
}

// What the games of a file hold, so that a test can tell that the round trip
// had side lines, glyphs and comments to carry.
struct Contents {
    size_t games = 0;
    size_t withVariations = 0;
    size_t glyphEntries = 0;
    size_t comments = 0;
};

void RoundTrip(const std::string& path, Contents& contents)
{
    const std::vector<GameSnapshot> original = ReadPgnFile(path, GameLimit);
    ASSERT_FALSE(original.empty());
    for (const GameSnapshot& game : original) {
        ++contents.games;
        contents.withVariations += game.treeCount > game.moveCount ? 1 : 0;
        contents.glyphEntries += game.nags.size();
        contents.comments += game.comments.size();
    }

    ScratchPath gamefile("round_trip.ovg");
    ScratchPath exported("round_trip.pgn");
    const OvGameFile file = OvCreateGamefile(gamefile.c_str());
    ASSERT_NE(file, 0u);
    Stop stop{original.size()};
    OvStartBulkOperation(file, OV_BULK_WRITE);
    EXPECT_EQ(OvPgnImport(path.c_str(), file, 0, "NBRQK", StopAfter, reinterpret_cast<intptr_t>(&stop)), 0);
    OvEndBulkOperation(file);
    ASSERT_EQ(OvGetGamesCount(file), static_cast<int32_t>(original.size()));

    Counter counter{0, OvGetGamesCount(file)};
    EXPECT_EQ(OvExportGames(exported.c_str(), file, CountUp, 0, reinterpret_cast<intptr_t>(&counter)),
              counter.last);
    OvCloseGamefile(file);

    const std::vector<GameSnapshot> reread = ReadPgnFile(exported.str());
    ASSERT_EQ(reread.size(), original.size());
    size_t differences = 0;
    for (size_t i = 0; i < original.size() && differences < 10; ++i)
        differences += SameGame(original[i], reread[i], i + 1) ? 0 : 1;
    EXPECT_EQ(differences, 0u);
}

TEST(RoundTrip, EcoFile)
{
    const std::string path = "/usr/share/pgn-extract/eco.pgn";
    if (!std::filesystem::exists(path))
        GTEST_SKIP() << path << " is not there (package pgn-extract)";
    Contents contents;
    RoundTrip(path, contents);
    EXPECT_GT(contents.games, 1000u);
}

TEST(RoundTrip, SelfPlayCorpus)
{
    const std::string path = ORVAN_SOURCE_DIR "/../shared/corpus/selfplay.pgn";
    if (!std::filesystem::exists(path))
        GTEST_SKIP() << path << " is not there";
    Contents contents;
    RoundTrip(path, contents);
    EXPECT_GT(contents.withVariations, 0u);
    EXPECT_GT(contents.glyphEntries, 0u);
    EXPECT_GT(contents.comments, 0u);
}

}  // namespace
