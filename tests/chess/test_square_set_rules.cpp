// The square-set answers against the plain generator on the corpus positions, some records spoiled
// so that the choice between square sets and the step-by-step walk is tested as well.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <random>
#include <vector>

#include "chess/move_generator.h"
#include "chess/move_notation.h"
#include "chess/position.h"
#include "tests/chess/corpus_games.h"
#include "tests/chess/fen_setter.h"
#include "tests/chess/plain_generator.h"

namespace {

constexpr size_t CorpusPositionLimit = 100000;

struct Legal {
    std::vector<uint32_t> moves;
    bool found(uint32_t move) const { return std::find(moves.begin(), moves.end(), move) != moves.end(); }
};

Legal PlainLegalMoves(const sPosition& position)
{
    Legal legal;
    for (int from = 0; from < 64; ++from)
        for (int to : PlainDestinations(position, from))
            legal.moves.push_back(Move(from, to));
    return legal;
}

// Compares every answer for one position and one move of it (0 for none); every target of
// `probeFrom` is asked for, beside the legal moves of all the others.
void ExpectAgreement(sPosition position, uint32_t move, const Legal& legal, int probeFrom)
{
    const sPosition before = position;
    for (uint32_t legalMove : legal.moves)
        ASSERT_EQ(MoveIsLegal(&position, legalMove), 1) << std::hex << legalMove;
    for (int to = 0; to < 64; ++to)
        ASSERT_EQ(MoveIsLegal(&position, Move(probeFrom, to)), legal.found(Move(probeFrom, to)) ? 1 : 0)
            << probeFrom << "-" << to;
    ASSERT_EQ(SideToMoveHasNoMove(&position), legal.moves.empty() ? 1 : 0);
    if (move != 0) {
        ASSERT_EQ(FindAmbiguity(&position, move), PlainAmbiguity(position, move)) << std::hex << move;
        ASSERT_EQ(MoveOutcome(&position, move), PlainOutcome(position, move)) << std::hex << move;
        OvGetMoveInfo(&position, move);
    }
    ASSERT_EQ(std::memcmp(&position, &before, sizeof position), 0);
}

// Now and then a stray en passant square, castling fields above 1, a second king, an edge pawn, a non-piece.
void MaybeSpoil(sPosition& position, std::mt19937& random)
{
    switch (random() % 16) {
    case 0: position.epSquare = static_cast<uint8_t>(random() % 70); break;
    case 1: position.castleWhiteShort = position.castleBlackLong = static_cast<uint8_t>(random() % 70); break;
    case 2: position.board[random() % 64] = (random() % 2) ? OV_WHITE_KING : OV_BLACK_KING; break;
    case 3: position.board[(random() % 2) * 56 + random() % 8] = (random() % 2) ? OV_WHITE_PAWN : OV_BLACK_PAWN; break;
    case 4: position.board[random() % 64] = static_cast<uint8_t>(random() % 2 ? 7 : 8 + 7 * (random() % 2)); break;
    case 5: position.board[random() % 64] = static_cast<uint8_t>(16 + random() % 240); break;
    default: break;
    }
}

TEST(SquareSetRules, AgreeWithThePlainGeneratorOnRealGames)
{
    std::mt19937 random(2025);
    size_t positions = 0;
    const bool read = VisitCorpusGames([&](const PgnGame& game) {
        sPosition played = *game.position;
        for (uint32_t i = 0; i < game.moveCount && !HasFatalFailure(); ++i, ++positions) {
            sPosition position = played;
            MaybeSpoil(position, random);
            const Legal legal = PlainLegalMoves(position);
            // The game's move, or a legal one when the spoilt record refuses it.
            const uint32_t move = legal.moves.empty()            ? 0
                                  : legal.found(game.moves[i]) ? game.moves[i]
                                                               : legal.moves[random() % legal.moves.size()];
            ExpectAgreement(position, move, legal, static_cast<int>(random() % 64));
            ApplyMove(&played, game.moves[i]);
        }
        return positions < CorpusPositionLimit && !HasFatalFailure();
    });
    if (!read)
        GTEST_SKIP() << "corpus " << CorpusPath << " not found";
    EXPECT_GT(positions, 0u);
}

}  // namespace
