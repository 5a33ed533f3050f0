#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "pgn/write/fen_writer.h"

namespace {

sPosition EmptyBoard()
{
    sPosition position;
    std::memset(&position, 0, sizeof position);
    position.sideToMove = 1;
    position.epSquare = OV_NO_EP_SQUARE;
    return position;
}

std::string FenOf(const sPosition& position, uint32_t firstMoveNumber)
{
    char text[FenTextSize];
    size_t length = PositionToFen(position, firstMoveNumber, text);
    EXPECT_EQ(length, std::strlen(text));
    return text;
}

TEST(PositionToFen, RunsOfEmptySquares)
{
    sPosition position = EmptyBoard();
    position.board[4] = OV_WHITE_KING;
    EXPECT_EQ(FenOf(position, 0), "8/8/8/8/8/8/8/4K3 w - - 0 1");
    position.board[60] = OV_BLACK_KING;
    position.board[12] = OV_WHITE_PAWN;
    position.board[0] = OV_WHITE_ROOK;
    position.board[63] = OV_BLACK_ROOK;
    EXPECT_EQ(FenOf(position, 11), "4k2r/8/8/8/8/8/4P3/R3K3 w - - 0 12");
}

TEST(PositionToFen, SideCastlingAndEnPassant)
{
    sPosition position = EmptyBoard();
    position.board[4] = OV_WHITE_KING;
    position.board[60] = OV_BLACK_KING;
    position.board[28] = OV_WHITE_PAWN;  // e4, having just stepped over e3
    position.sideToMove = 0;
    position.epSquare = 20;
    position.castleBlackLong = 1;
    position.castleWhiteShort = 8;  // a rook square instead of 1 gives the same letter
    EXPECT_EQ(FenOf(position, 4), "4k3/8/8/8/4P3/8/8/4K3 b Kq e3 0 5");
    position.castleWhiteLong = position.castleBlackShort = 1;
    position.epSquare = 47;
    position.sideToMove = 2;  // any value but 0 is White
    EXPECT_EQ(FenOf(position, 0), "4k3/8/8/8/4P3/8/8/4K3 w KQkq h6 0 1");
    position.epSquare = 200;
    EXPECT_EQ(FenOf(position, 0), "4k3/8/8/8/4P3/8/8/4K3 w KQkq - 0 1");
}

TEST(PositionToFen, CodesThatAreNoPiecesAndTheLongestText)
{
    sPosition position = EmptyBoard();
    position.board[0] = 7;
    position.board[1] = 8 + 16;  // only the low four bits are read
    position.board[2] = 15;
    position.board[3] = OV_BLACK_QUEEN | 0x80;
    EXPECT_EQ(FenOf(position, 0), "8/8/8/8/8/8/8/???q4 w - - 0 1");

    for (int square = 0; square < 64; ++square)
        position.board[square] = OV_WHITE_QUEEN;
    position.castleWhiteLong = position.castleWhiteShort = 1;
    position.castleBlackLong = position.castleBlackShort = 1;
    position.epSquare = 16;
    std::string fen = FenOf(position, 0xFFFFFFFEu);
    EXPECT_EQ(fen.size(), 94u);
    EXPECT_EQ(fen.substr(fen.size() - 23), " w KQkq a3 0 4294967295");
}

}  // namespace
