#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "pgn/write/fen_writer.h"
#include "pgn_write/test_game.h"

namespace {

std::string FenOf(const sPosition& position, uint32_t firstMoveNumber)
{
    char text[FenTextSize];
    size_t length = PositionToFen(position, firstMoveNumber, text);
    EXPECT_EQ(length, std::strlen(text));
    return text;
}

TEST(PositionToFen, PlacementSideCastlingAndEnPassant)
{
    TestGame game;
    game.SetUp({{"e1", OV_WHITE_KING}}, 1, 0);
    sPosition& position = *game.game().position;
    EXPECT_EQ(FenOf(position, 0), "8/8/8/8/8/8/8/4K3 w - - 0 1");

    game.SetUp({{"e1", OV_WHITE_KING}, {"e4", OV_WHITE_PAWN}, {"e8", OV_BLACK_KING},
                {"h8", OV_BLACK_ROOK}, {"a1", 7}, {"b1", 8 + 16}},  // no pieces: "?"
               0, 0);
    position.epSquare = Square("e3");
    position.castleBlackShort = 1;
    position.castleWhiteLong = 8;  // a rook square gives the same letter as 1
    EXPECT_EQ(FenOf(position, 4), "4k2r/8/8/8/4P3/8/8/??2K3 b Qk e3 0 5");

    position.sideToMove = 2;  // any value but 0 is White
    position.epSquare = 200;
    EXPECT_EQ(FenOf(position, 0), "4k2r/8/8/8/4P3/8/8/??2K3 w Qk - 0 1");
}

TEST(PositionToFen, LongestTextFitsItsRoom)
{
    sPosition position;
    std::memset(position.board, OV_WHITE_QUEEN, sizeof position.board);
    position.sideToMove = 1;
    position.epSquare = Square("a3");
    position.castleWhiteLong = position.castleWhiteShort = 1;
    position.castleBlackLong = position.castleBlackShort = 1;
    std::string fen = FenOf(position, 0xFFFFFFFEu);
    EXPECT_EQ(fen.size(), 94u);
    EXPECT_EQ(fen.substr(fen.size() - 23), " w KQkq a3 0 4294967295");
}

}  // namespace
