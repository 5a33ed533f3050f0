// The forms glyphs, comments and times take between a PgnGame and the store.
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "pgn/pgn_game.h"
#include "pgn/read/game_builder.h"
#include "pgn/write/game_to_pgn.h"
#include "support/capture.h"

namespace {

class AnnotationForms : public ::testing::Test {
protected:
    void SetUp() override { ClearPgnGame(pgn); }

    uint16_t Glyphs(const char* text, uint32_t index = 1)
    {
        pgn->nags[index] = 0;
        StoreShortComment(pgn, index, text);
        return pgn->nags[index];
    }

    // Stores a comment block as the store hands it out: a count, then the lines.
    int32_t StoreLines(uint32_t index, const std::vector<std::string>& lines, uint16_t count = 0)
    {
        std::string block(2, '\0');
        count = count != 0 ? count : static_cast<uint16_t>(lines.size());
        std::memcpy(block.data(), &count, sizeof count);
        for (const std::string& line : lines)
            block += line + '\0';
        block.pop_back();  // the block may end without a terminator
        return StoreLongComment(pgn, index, block.data(), block.size());
    }

    std::string CommentAt(uint32_t index) const
    {
        return pgn->commentIndex[index] != 0 ? pgn->commentText + pgn->commentIndex[index] : "<none>";
    }

    PgnGameStorage storage;
    PgnGame* pgn = storage.Game();
};

TEST_F(AnnotationForms, ShortCommentItemsBecomeGlyphNumbers)
{
    // The longer symbol first; a third glyph is dropped; 0 is no number.
    const struct { const char* text; uint16_t nags; size_t traceLines; } cases[] = {
        {"!14", 1 | 14 << 8, 0}, {"+-=", 18 | 11 << 8, 0}, {"!!?" "?!", 3 | 4 << 8, 1}, {"300", 0, 1},
        {"05", 5, 0}, {"#@", 0, 0}, {"x!", 1, 1}, {"\xB7", 14, 0}, {"\xB1", 0, 1},
    };
    for (const auto& c : cases) {
        TraceCapture trace;
        EXPECT_EQ(Glyphs(c.text), c.nags) << c.text;
        EXPECT_EQ(trace.lines.size(), c.traceLines) << c.text;
    }
    // Glyph codes take the mover from the index parity and the side to move.
    EXPECT_EQ(Glyphs("\xBB", 1), 44);
    EXPECT_EQ(Glyphs("\xBB", 2), 45);
    pgn->position->sideToMove = 0;
    EXPECT_EQ(Glyphs("\xBB", 1), 45);
}

TEST_F(AnnotationForms, CommentLinesJoinAtWordBoundaries)
{
    EXPECT_EQ(StoreLines(3, {"Good ", "move", " here"}), 1);
    EXPECT_EQ(CommentAt(3), "Good movehere");
    EXPECT_EQ(StoreLines(4, {"  ", " "}), 0);
    EXPECT_EQ(CommentAt(4), "<none>");
    EXPECT_EQ(StoreLines(6, {"abc", "def"}, 60000), 1);  // a count beyond the block
    EXPECT_EQ(CommentAt(6), "abcdef");
}

TEST_F(AnnotationForms, FullCommentStoreDropsOnlyTheCommentThatDoesNotFit)
{
    pgn->commentUsed = PGN_COMMENT_STORE - 12;
    TraceCapture trace;
    EXPECT_EQ(StoreLines(1, {"eleven char"}), 0);
    EXPECT_EQ(CommentAt(1), "<none>");
    EXPECT_EQ(trace.lines.size(), 1u);
    EXPECT_EQ(StoreLines(1, {"ten chars!"}), 1);
    EXPECT_EQ(CommentAt(1), "ten chars!");
}

TEST(PgnTimeToMinutes, HoursAndTheNextNumber)
{
    for (const auto& [text, minutes] : {std::pair{"1:30", 90}, {"2", 120}, {"01:30:00", 90}, {"", 0}, {"abc:30", 30},
                                        {"99999999999:00", INT32_MAX}})
        EXPECT_EQ(PgnTimeToMinutes(text), minutes) << text;
}

}  // namespace
