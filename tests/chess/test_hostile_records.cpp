// Records with any bytes: operations stay in their buffers, leave the record, agree with the plain generator.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <random>
#include <vector>

#include "chess/move_generator.h"
#include "chess/move_notation.h"
#include "chess/position.h"
#include "tests/chess/plain_generator.h"

namespace {

bool SameRecord(const sPosition& a, const sPosition& b) { return std::memcmp(&a, &b, sizeof a) == 0; }

template <typename Record>
Record RandomBytes(std::mt19937& random)
{
    Record record;
    for (size_t i = 0; i < sizeof record; ++i)
        reinterpret_cast<uint8_t*>(&record)[i] = static_cast<uint8_t>(random());
    return record;
}

TEST(HostileRecords, StayInsideAndComeBackUnchanged)
{
    std::mt19937 random(70);
    for (int round = 0; round < 20000; ++round) {
        // Most boards take piece codes and near misses, so men meet; some have kings and rooks at home.
        sPosition position = RandomBytes<sPosition>(random);
        if (round % 4 != 0)
            for (uint8_t& square : position.board)
                square = random() % 3 == 0 ? static_cast<uint8_t>(random() % 16) : 0;
        if (round % 4 == 1) {
            position.board[4] = OV_WHITE_KING;
            position.board[60] = OV_BLACK_KING;
            position.board[random() % 2 ? 0 : 7] = OV_WHITE_ROOK;
            position.board[random() % 2 ? 56 : 63] = OV_BLACK_ROOK;
            position.epSquare = static_cast<uint8_t>(random() % 2 ? 16 + random() % 8 : 40 + random() % 8);
        }
        const sPosition before = position;

        const int verdict = OvIsLegalPos(&position);
        ASSERT_TRUE(verdict >= OV_POS_LEGAL && verdict <= OV_POS_TOO_MANY_MEN);

        for (int from = 0; from < 64; ++from) {
            int32_t destinations[MaxDestinations + 1];
            destinations[MaxDestinations] = -7;
            const int count = GenerateDestinations(&position, from, destinations);
            ASSERT_LE(count, MaxDestinations);
            ASSERT_EQ(destinations[MaxDestinations], -7);
            // Shortcuts for pins and checks agree with the plain trial, the list with the plain walk.
            for (int i = 0; i < count; ++i) {
                sPosition trial = position;
                ASSERT_EQ(MoveKeepsKingSafe(&trial, from, destinations[i]), 1) << from << "-" << destinations[i];
            }
            const std::vector<int> list(destinations, destinations + count);
            ASSERT_EQ(list, PlainDestinations(position, from)) << "from " << from;
            const int to = static_cast<int>(random() % 64);
            ASSERT_EQ(MoveIsLegal(&position, static_cast<uint32_t>(from | to << 8)),
                      std::find(list.begin(), list.end(), to) != list.end() ? 1 : 0)
                << from << "-" << to;
        }
        ASSERT_TRUE(SameRecord(position, before)) << "GenerateDestinations";

        for (int trial = 0; trial < 8; ++trial) {
            const uint32_t move = static_cast<uint32_t>(random());
            MoveIsLegal(&position, move);
            const int info = OvGetMoveInfo(&position, move);
            ASSERT_TRUE(SameRecord(position, before)) << "trying " << std::hex << move;
            char text[OV_MOVE_TEXT_SIZE + 6];
            std::memset(text, '@', sizeof text);
            const int length = OvMoveToText(move, uint32_t(info), text, TextMode(random()), nullptr);
            ASSERT_LT(length, OV_MOVE_TEXT_SIZE);
            ASSERT_EQ(text[OV_MOVE_TEXT_SIZE], '@');

            sPosition played = position;
            ASSERT_EQ(OvPlayMove(&played, move), 1);
        }
        sPosition sanitized = position;
        SanitizeCastling(&sanitized);
        const int stands = SanitizeEnPassant(&sanitized, round % 2);
        ASSERT_EQ(stands, sanitized.epSquare == position.epSquare ? 1 : 0);
        ASSERT_TRUE(sanitized.epSquare <= 63 || sanitized.epSquare == OV_NO_EP_SQUARE);
    }
}

TEST(HostileRecords, DriverBoardWithAnyBytes)
{
    std::mt19937 random(152);
    for (int round = 0; round < 2000; ++round) {
        BoardRecord board = RandomBytes<BoardRecord>(random);
        if (round % 2)
            board.epFile = static_cast<int32_t>(random() % 10);
        sPosition position;
        const int result = PositionFromBoard(&position, &board, round % 3 == 0);
        for (uint8_t square : position.board)
            ASSERT_TRUE(square <= 6 || (square >= 9 && square <= 14));
        ASSERT_TRUE(position.sideToMove <= 1);
        ASSERT_TRUE(position.epSquare == OV_NO_EP_SQUARE || (result == 1 && position.epSquare < 64));
        ASSERT_TRUE(position.castleWhiteLong <= 1 && position.castleBlackShort <= 1);
    }
}

}  // namespace
