// The position record: start position, driver board conversion, sanitising, whole-position legality.
#include <gtest/gtest.h>

#include <array>
#include <cstring>

#include "chess/piece_codes.h"
#include "chess/position.h"
#include "tests/chess/fen_setter.h"

namespace {

BoardRecord DriverBoardOf(const sPosition& position)
{
    BoardRecord board{};
    for (int square = 0; square < 64; ++square)
        board.squares[BoardIndex(square & 7, square >> 3)] = DriverPieceFromPosition(position.board[square]);
    board.sideToMove = WhiteToMove(position) ? 0 : 1;
    board.castling = DrvCastleWhiteShort | DrvCastleWhiteLong | DrvCastleBlackShort | DrvCastleBlackLong;
    return board;
}

// White long, white short, black long, black short.
std::array<int, 4> Castling(const sPosition& p)
{
    return {p.castleWhiteLong, p.castleWhiteShort, p.castleBlackLong, p.castleBlackShort};
}

TEST(StartPosition, OnlyAllSeventyBytesEqualMakeTheStartPosition)
{
    EXPECT_EQ(IsStartPosition(&StartPosition), 1);
    for (int byte = 0; byte < 70; ++byte) {
        sPosition changed = StartPosition;
        reinterpret_cast<uint8_t*>(&changed)[byte] ^= 1;
        EXPECT_EQ(IsStartPosition(&changed), 0) << "byte " << byte;
    }
}

TEST(PositionFromBoard, SquaresCastlingSideAndEnPassantFile)
{
    BoardRecord board = DriverBoardOf(StartPosition);
    board.squares[0] = 99;  // the border is the driver's and is not read
    sPosition position;
    std::memset(&position, 0xAB, sizeof position);
    EXPECT_EQ(PositionFromBoard(&position, &board, 1), 1);
    EXPECT_EQ(IsStartPosition(&position), 1);

    board.castling = DrvCastleWhiteLong | DrvCastleBlackShort;
    board.sideToMove = 1;
    board.squares[BoardIndex(3, 3)] = 22;   // no driver piece
    board.squares[BoardIndex(2, 2)] = 14;   // no piece among 1..21
    EXPECT_EQ(PositionFromBoard(&position, &board, 0), 1);
    EXPECT_EQ(position.sideToMove, 0);
    EXPECT_EQ(Castling(position), (std::array<int, 4>{1, 0, 0, 1}));
    EXPECT_EQ(position.board[27] | position.board[18], 0);

    struct Case { const char* fen; int epFile, strict, result, epSquare; };
    // On the a-file no neighbour is needed; a lone pawn passes only the loose test.
    const char* lonePawn = "4k3/8/8/8/2P5/8/8/4K3 b - -";
    for (const Case& c : {Case{"4k3/8/8/8/P7/8/8/4K3 b - -", 1, 1, 1, 16}, Case{lonePawn, 3, 1, 0, 64},
                          Case{lonePawn, 3, 0, 1, 18}, Case{"4k3/8/8/8/8/8/8/4K3 w - -", -40, 0, 0, 64}}) {
        board = DriverBoardOf(PositionFromFen(c.fen));
        board.epFile = c.epFile;
        EXPECT_EQ(PositionFromBoard(&position, &board, c.strict), c.result) << c.fen << " file " << c.epFile;
        EXPECT_EQ(position.epSquare, c.epSquare) << c.fen << " file " << c.epFile;
    }
}

TEST(SanitizeCastling, EachTestClearsOnlyItsFields)
{
    // Fields above 1 are kept as they stand while king and rooks are home.
    sPosition position = PositionFromFen("r3k2r/8/8/8/8/8/8/R3K2R w - -");
    position.castleWhiteLong = 5;
    position.castleWhiteShort = position.castleBlackShort = 1;
    position.castleBlackLong = 200;
    sPosition sanitized = position;
    SanitizeCastling(&sanitized);
    EXPECT_EQ(std::memcmp(&sanitized, &position, sizeof position), 0);
    const std::pair<int, std::array<int, 4>> cases[] = {
        {4, {0, 0, 200, 1}}, {7, {5, 0, 200, 1}}, {0, {0, 1, 200, 1}},
        {60, {5, 1, 0, 0}},  {63, {5, 1, 200, 0}}, {56, {5, 1, 0, 1}}};
    for (const auto& [square, fields] : cases) {
        sanitized = position;
        sanitized.board[square] = 0;
        SanitizeCastling(&sanitized);
        EXPECT_EQ(Castling(sanitized), fields) << square;
    }
}

TEST(SanitizeEnPassant, StepsStopAtTheFirstThatDecides)
{
    struct Case { const char* fen; int epSquare, strict, result; };
    for (const Case& c : {
             Case{"4k3/8/8/8/2P5/8/8/4K3 b - -", 18, 1, 0},  Case{"4k3/8/8/8/2Pp4/8/8/4K3 b - -", 18, 1, 1},
             Case{"4k3/8/8/3p4/8/8/8/4K3 w - -", 43, 0, 1},  Case{"4k3/8/3n4/3p4/8/8/8/4K3 w - -", 43, 0, 0},
             Case{"4k3/8/8/8/8/8/8/4K3 w - -", 65, 0, 0},    Case{"4k3/8/8/8/3p4/8/8/4K3 w - -", 35, 0, 0},
         }) {
        sPosition position = PositionFromFen(c.fen);
        position.epSquare = static_cast<uint8_t>(c.epSquare);
        EXPECT_EQ(SanitizeEnPassant(&position, c.strict), c.result) << c.fen << " ep " << c.epSquare;
        EXPECT_EQ(position.epSquare, c.result ? c.epSquare : 64) << c.fen << " ep " << c.epSquare;
    }
}

TEST(OvIsLegalPos, ChecksRunInOrder)
{
    const std::pair<const char*, int> cases[] = {
        {"8/8/8/8/8/8/8/4K3 w - -", OV_POS_KING_MISSING},
        {"4k3/8/8/8/8/8/8/4K2r b - -", OV_POS_OPPONENT_IN_CHECK},
        {"4k3/8/8/8/8/8/8/4K2r w - -", OV_POS_LEGAL},  // the side to move may be in check
        {"4k2R/8/8/8/8/8/8/4K2r w - -", OV_POS_OPPONENT_IN_CHECK},  // both attacked: black counts
        {"4k3/8/8/8/8/8/8/r3K2K b - -", OV_POS_OPPONENT_IN_CHECK},  // the check comes before the count
        {"4k2P/8/8/8/8/8/8/4K3 w - -", OV_POS_PAWN_ON_EDGE_RANK},
        {"1nn1k1n1/pppppppp/8/8/8/8/8/4K3 w - -", OV_POS_TOO_MANY_MEN},
        {"QQQQQQQQ/QQ6/8/8/8/8/8/k3K3 b - -", OV_POS_TOO_MANY_MEN}, {"QQQQQQQQ/Q7/8/8/8/8/8/k3K3 b - -", OV_POS_LEGAL},
        {"rnbqkbnr/pppppppp/8/8/8/N7/PPPPPPPP/RNBQKBNR w - -", OV_POS_TOO_MANY_MEN},  // 17 men
    };
    for (const auto& [fen, result] : cases) {
        const sPosition position = PositionFromFen(fen);
        EXPECT_EQ(OvIsLegalPos(&position), result) << fen;
    }
    // Bytes that are no pieces count for nothing, but a byte AND 7 that is a
    // pawn on the first rank does.
    sPosition position = PositionFromFen("4k3/8/8/8/8/8/8/4K3 w - -");
    for (int square = 20; square < 30; ++square)
        position.board[square] = static_cast<uint8_t>(16 + square * 7);
    position.board[30] = 7;
    position.epSquare = 200;
    position.castleWhiteLong = 77;
    EXPECT_EQ(OvIsLegalPos(&position), OV_POS_LEGAL);
    position.board[3] = 17;
    EXPECT_EQ(OvIsLegalPos(&position), OV_POS_PAWN_ON_EDGE_RANK);
}

}  // namespace
