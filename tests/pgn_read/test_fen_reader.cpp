// The FEN reader: what it tolerates inside a field, and the faults that make a game skipped.
#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "chess/position.h"
#include "pgn/read/fen_reader.h"
#include "support/capture.h"

namespace {

constexpr const char* StartFen = "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq - 0 1";

TEST(FenReader, CountsFaultsInTheStructure)
{
    const std::pair<const char*, int32_t> cases[] = {
        {StartFen, 0},
        {"rnbqkbnrpppppppp8888PPPPPPPPRNBQKBNR w KQkq - 0 1", 0},
        {"4k3/8/8/8/8/8/8/4K2 w - - 0 1", 1},
        {"", 4},
        {"4k3/8/8/8/8/8/8/4K3 w - e4 0 1", 1},
        {"4k3/8/8/8/8/8/8/4K3 w -", 2},
        {"kq9999999 w - - 0 1", 0},
        {"4k3/8/8/8/8/8/8/4K3 w - - 0", 1},
    };
    for (const auto& [text, faults] : cases) {
        sPosition position;
        uint32_t firstMoveNumber = 0;
        EXPECT_EQ(ReadFen(&position, &firstMoveNumber, text), faults) << text;
    }
}

TEST(FenReader, FillsTheWholePosition)
{
    sPosition position;
    std::memset(&position, 0x5A, sizeof position);
    uint32_t firstMoveNumber = 7;
    ASSERT_EQ(ReadFen(&position, &firstMoveNumber, "4k3/8/8/8/8/8/8/R3K2R b - - 3 41"), 0);
    EXPECT_EQ((std::vector<int>{int(firstMoveNumber), position.sideToMove, position.board[0], position.board[4],
                                position.board[60], position.castleWhiteLong + position.castleWhiteShort}),
              (std::vector<int>{40, 0, OV_WHITE_ROOK, OV_WHITE_KING, OV_BLACK_KING, 0}));

    // A full-move number of 0 leaves the caller's value; the digits 0 and 9
    // of the board add no square and nine.
    ASSERT_EQ(ReadFen(&position, &firstMoveNumber, "k0709999991K w - - 0 0"), 0);
    EXPECT_EQ((std::vector<int>{int(firstMoveNumber), position.board[56], position.board[7], position.sideToMove}),
              (std::vector<int>{40, OV_BLACK_KING, OV_WHITE_KING, 1}));
}

TEST(FenReader, RemovesRightsAndEnPassantTheBoardContradicts)
{
    TraceCapture trace;
    sPosition position;
    uint32_t firstMoveNumber = 0;
    // King off e1: both white rights go, without a fault.
    ASSERT_EQ(ReadFen(&position, &firstMoveNumber, "r3k2r/8/8/8/8/8/8/R4K1R w KQkq - 0 1"), 0);
    EXPECT_EQ((std::vector<int>{position.castleWhiteLong, position.castleWhiteShort, position.castleBlackLong,
                                position.castleBlackShort}),
              (std::vector<int>{0, 0, 1, 1}));
    EXPECT_TRUE(trace.lines.empty());

    // One no pawn can use is removed, with a trace line and no fault.
    ASSERT_EQ(ReadFen(&position, &firstMoveNumber, "4k3/8/8/8/4P3/8/8/4K3 b - e3 0 1"), 0);
    EXPECT_EQ(position.epSquare, OV_NO_EP_SQUARE);
    ASSERT_EQ(trace.lines.size(), 1u);
    EXPECT_EQ(trace.lines[0], "OrvanDll: removing illegal en passant flag.");
}

}  // namespace
