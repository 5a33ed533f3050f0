// The description byte of a move and its text: modes, host tables and the cases real games seldom
// show (the corpus round trip and the plain generator comparisons cover the ordinary ones).
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "chess/move_notation.h"
#include "chess/position.h"
#include "tests/chess/fen_setter.h"

namespace {

std::string Text(uint32_t move, uint32_t info, TextMode mode, const NotationTable* table = nullptr)
{
    char text[OV_MOVE_TEXT_SIZE];
    const int length = OvMoveToText(move, info, text, mode, table);
    EXPECT_EQ(static_cast<size_t>(length), std::strlen(text));
    return text;
}

TEST(MoveText, ModesWithTheDefaultTable)
{
    struct Case { uint32_t move, info; const char *mode4, *mode1, *mode3; };
    for (const Case& c : {
             Case{Move(36, 43), 0x4E, "exd6ep", "e5xd6ep", "e5xd6ep"},
             Case{Move(52, 60), 0x17, "e8=Q+", "e7-e8Q+", "e7-e8Q+"},
             Case{Move(0, 32), 0x8A, "R1xa5", "Ra1xa5", "a1xa5"},
             Case{Move(4, 2), 0xB4, "O-O-O#", "O-O-O#", "O-O-O#"},
             Case{Move(41, 57, 2), 0x27, "b8=B", "b6-b8B", "b6-b8B"},  // stalemate writes nothing
             Case{Move(0, 3) | 0xC0, 0x42, "Rad1", "Ra1-d1", "a1-d1"},
             Case{Move(0, 18), 0xCB, "Qa1xc3", "Qa1xc3", "a1xc3"},
         }) {
        EXPECT_EQ(Text(c.move, c.info, 4), c.mode4) << std::hex << c.info;
        EXPECT_EQ(Text(c.move, c.info, 1), c.mode1) << std::hex << c.info;
        EXPECT_EQ(Text(c.move, c.info, 3), c.mode3) << std::hex << c.info;
    }
    EXPECT_EQ(Text(Move(6, 21), 0x00, 0), "Nf3");
    EXPECT_EQ(Text(Move(6, 21), 0x00, 0xFFFFFFF8), "Nf3");  // unknown mode bits are ignored
}

TEST(MoveText, HostTables)
{
    NotationTable table = OV_DEFAULT_NOTATION_TABLE;
    std::memcpy(table.symbols, "SLTDKo:*        ", 16);  // blanks for all suffixes and no marks
    EXPECT_EQ(Text(Move(52, 60, 3), 0x17, 4, &table), "e8=S");
    EXPECT_EQ(Text(Move(4, 2), 0xB4, 4, &table), "o:o:o");
    EXPECT_EQ(Text(Move(36, 43), 0x5E, 4, &table), "e*d6");
    std::memcpy(table.symbols, "NBRQKO- ++##==e.", 16);
    EXPECT_EQ(Text(Move(28, 35), 0x4D, 4, &table), "e d5");  // a blank capture mark is copied
    EXPECT_EQ(Text(Move(36, 43), 0x7E, 4, &table), "e d6e.##");
}

TEST(MoveText, LongestTextFits)
{
    char text[16];
    std::memset(text, '@', sizeof text);
    NotationTable table = OV_DEFAULT_NOTATION_TABLE;
    std::memcpy(table.symbols, "NBRQKO-x++######", 16);
    // Every byte and mode: the text, terminator included, stays in 10 bytes.
    int longest = 0;
    for (uint32_t info = 0; info < 256; ++info)
        for (TextMode mode = 0; mode < 8; ++mode) {
            const int length = OvMoveToText(Move(52, 60, 3), info, text, mode, &table);
            longest = std::max(longest, length);
            ASSERT_LT(length, OV_MOVE_TEXT_SIZE);
            ASSERT_EQ(text[length], '\0');
            ASSERT_EQ(text[OV_MOVE_TEXT_SIZE], '@');
        }
    EXPECT_EQ(longest, 9);
}

TEST(MoveInfo, DescribesMovesOfThePosition)
{
    struct Case { const char* fen; uint32_t move; int info; const char* text; };
    for (const Case& c : {
             Case{"4k3/8/8/3pP3/8/8/8/4K3 w - -", Move(36, 43), 0x4E, "exd6ep"},  // no en passant square needed
             Case{"k7/8/8/1Q6/8/8/8/7K w - -", Move(33, 41), 0x23, "Qb6"},          // stalemate
             Case{"4k3/4r3/8/8/8/8/4N3/1N2K3 w - -", Move(1, 18), 0x00, "Nc3"},  // the rival is pinned
             Case{"4k3/8/8/8/8/8/8/4K2R w K -", Move(4, 7), 0x0C, "Kxh1"},       // a king onto its own rook
             Case{"4k3/8/8/8/8/8/8/R3K3 w Q -", Move(4, 2) | 0x4000, 0x04, "Kc1"},  // no classical word
         }) {
        sPosition position = PositionFromFen(c.fen);
        const sPosition before = position;
        const int info = OvGetMoveInfo(&position, c.move);
        EXPECT_EQ(info, c.info) << c.fen << " " << std::hex << c.move;
        EXPECT_EQ(Text(c.move, static_cast<uint32_t>(info), 4), c.text) << c.fen;
        EXPECT_EQ(std::memcmp(&position, &before, sizeof position), 0) << c.fen;
    }
}

TEST(MoveInfo, Helpers)
{
    sPosition position = PositionFromFen("r3k2r/1P6/8/8/8/8/1p6/R3K2R w KQkq -");
    EXPECT_EQ(IsCastlingMove(&position, Move(4, 6) | 0xC0), 1);
    EXPECT_EQ(IsCastlingMove(&position, Move(60, 62)), 0);  // black is not to move
    EXPECT_EQ(IsCastlingMove(&position, Move(4, 6, 1)), 0);
    EXPECT_EQ(IsPromotion(&position, Move(49, 57)), 1);
    EXPECT_EQ(IsPromotion(&position, Move(9, 1)), 1);  // whoever is to move
    EXPECT_EQ(IsEnPassantCapture(&position, Move(49, 58)), 1);  // any diagonal step onto an empty square
    EXPECT_EQ(IsEnPassantCapture(&position, Move(9, 16)), 0);   // black pawn, white to move

    // Without a king of the side to move, square 63 stands for it.
    sPosition kingless = PositionFromFen("k7/8/8/8/8/8/8/7r w - -");
    EXPECT_EQ(SideToMoveInCheck(&kingless), 1);
    kingless.board[7] = 0, kingless.board[6] = OV_BLACK_ROOK;
    EXPECT_EQ(SideToMoveInCheck(&kingless), 0);
    EXPECT_EQ(SideToMoveHasNoMove(&kingless), 1);
}

}  // namespace
