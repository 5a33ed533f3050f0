// The forms glyphs, comments and times take between a PgnGame and the store:
// short comment texts read back as glyph numbers, comment lines joined, time
// tags as minutes.
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "chess/position.h"
#include "pgn/pgn_game.h"
#include "pgn/read/game_builder.h"
#include "pgn/write/game_to_pgn.h"
#include "support/capture.h"

namespace {

class AnnotationForms : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(storage.Allocated());
        ClearPgnGame(pgn);
    }

    uint16_t Glyphs(const char* text, uint32_t index = 1)
    {
        pgn->nags[index] = 0;
        StoreShortComment(pgn, index, text);
        return pgn->nags[index];
    }

    // A comment block as the store hands it out: a count, then the lines.
    static std::string Block(const std::vector<std::string>& lines)
    {
        std::string block(2, '\0');
        const auto count = static_cast<uint16_t>(lines.size());
        std::memcpy(block.data(), &count, sizeof count);
        for (const std::string& line : lines)
            block += line + '\0';
        return block;
    }

    int32_t StoreLines(uint32_t index, const std::vector<std::string>& lines)
    {
        const std::string block = Block(lines);
        return StoreLongComment(pgn, index, block.data(), block.size());
    }

    std::string CommentAt(uint32_t index) const
    {
        return pgn->commentIndex[index] != 0 ? pgn->commentText + pgn->commentIndex[index] : "<none>";
    }

    PgnGameStorage storage;
    PgnGame* pgn = storage.Game();
};

constexpr uint16_t Two(uint8_t first, uint8_t second)
{
    return static_cast<uint16_t>(first | second << 8);
}

TEST_F(AnnotationForms, ShortCommentItemsBecomeGlyphNumbers)
{
    const struct {
        const char* text;
        uint16_t nags;
        size_t traceLines;
    } cases[] = {
        {"14", 14, 0},
        {"$14", 14, 0},
        {"!?", 5, 0},          // the longer symbol first, not ! and ?
        {"!14", Two(1, 14), 0},
        {"14!", Two(14, 1), 0},
        {"+-=", Two(18, 11), 0},
        {"!!?" "?!", Two(3, 4), 1},  // a third glyph is dropped with a message
        {"300", 0, 1},            // out of range
        {"0", 0, 1},              // 0 is no number: an unknown character
        {"05", 5, 0},
        {"#@", 0, 0},             // dropped without a word
        {"x!", 1, 1},
        {"$", 0, 0},
        {"\xB7", 14, 0},
        {"\xB1", 0, 1},           // a glyph code without a number
    };
    for (const auto& c : cases) {
        TraceCapture trace;
        EXPECT_EQ(Glyphs(c.text), c.nags) << c.text;
        EXPECT_EQ(trace.lines.size(), c.traceLines) << c.text;
    }
}

TEST_F(AnnotationForms, GlyphCodesFollowTheMoverByIndexParity)
{
    // Entry index 0 is the first move: White's from the standard start.
    EXPECT_EQ(Glyphs("\xBB", 1), 44);
    EXPECT_EQ(Glyphs("\xBB", 2), 45);
    pgn->position->sideToMove = 0;
    EXPECT_EQ(Glyphs("\xBB", 1), 45);
    EXPECT_EQ(Glyphs("\xBB", 2), 44);
}

TEST_F(AnnotationForms, CommentLinesJoinAtWordBoundaries)
{
    EXPECT_EQ(StoreLines(3, {"Good ", "move", " here"}), 1);
    EXPECT_EQ(CommentAt(3), "Good movehere");

    EXPECT_EQ(StoreLines(4, {"  ", " "}), 0);
    EXPECT_EQ(CommentAt(4), "<none>");

    EXPECT_EQ(StoreLines(5, {"  lead and trail  "}), 1);
    EXPECT_EQ(CommentAt(5), "lead and trail");
    EXPECT_EQ(CommentAt(3), "Good movehere");
}

TEST_F(AnnotationForms, FullCommentStoreDropsOnlyTheCommentThatDoesNotFit)
{
    pgn->commentUsed = PGN_COMMENT_STORE - 12;
    TraceCapture trace;
    EXPECT_EQ(StoreLines(1, {"eleven char"}), 0);
    EXPECT_EQ(CommentAt(1), "<none>");
    ASSERT_EQ(trace.lines.size(), 1u);
    EXPECT_NE(trace.lines[0].find("comment buffer full"), std::string::npos);
    EXPECT_EQ(StoreLines(1, {"ten chars!"}), 1);
    EXPECT_EQ(CommentAt(1), "ten chars!");
}

TEST_F(AnnotationForms, CommentBlockIsNeverReadPastItsEnd)
{
    std::string block = Block({"abc", "def"});
    block.pop_back();  // the last line loses its terminator
    EXPECT_EQ(StoreLongComment(pgn, 1, block.data(), block.size()), 1);
    EXPECT_EQ(CommentAt(1), "abcdef");
    const uint16_t lies = 60000;
    std::memcpy(block.data(), &lies, sizeof lies);
    EXPECT_EQ(StoreLongComment(pgn, 2, block.data(), block.size()), 1);
}

TEST(PgnTimeToMinutes, HoursAndTheNextNumber)
{
    const struct {
        const char* text;
        int32_t minutes;
    } cases[] = {
        {"1:30", 90}, {"2", 120}, {"01:30:00", 90}, {"0:05", 5}, {"", 0},
        {"abc:30", 30}, {"2h 15m", 135}, {"99999999999:00", INT32_MAX},
    };
    for (const auto& c : cases)
        EXPECT_EQ(PgnTimeToMinutes(c.text), c.minutes) << c.text;
}

}  // namespace
