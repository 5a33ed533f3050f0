// The square-set answers against the plain generator, on the positions of
// the corpus games (some records spoiled, so that the choice between square
// sets and the step-by-step walk is tested as well).
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <memory>
#include <random>
#include <vector>

#include "chess/move_generator.h"
#include "chess/move_notation.h"
#include "chess/position.h"
#include "pgn/pgn_game.h"
#include "pgn/read/pgn_read.h"
#include "tests/chess/plain_generator.h"
#include "support/corpus.h"

namespace {

constexpr size_t CorpusPositionLimit = 100000;

constexpr uint32_t Move(int from, int to) { return static_cast<uint32_t>(from | to << 8); }

bool SameRecord(const sPosition& a, const sPosition& b) { return std::memcmp(&a, &b, sizeof a) == 0; }

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

// Compares every answer for one position and one move of it (`move` 0 when
// the position has none); `probeFrom` is the square whose every target is
// asked for, beside the legal moves of all the others.
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
    ASSERT_TRUE(SameRecord(position, before));
}

struct CorpusPositions {
    std::vector<sPosition> positions;
    std::vector<uint32_t> moves;
};

int32_t CollectMainLine(PgnGame* game, int32_t, int32_t, intptr_t context)
{
    auto& collected = *reinterpret_cast<CorpusPositions*>(context);
    sPosition position = *game->position;
    for (uint32_t i = 0; i < game->moveCount && collected.positions.size() < CorpusPositionLimit; ++i) {
        collected.positions.push_back(position);
        collected.moves.push_back(game->moves[i]);
        ApplyMove(&position, game->moves[i]);
    }
    return collected.positions.size() < CorpusPositionLimit;
}

// Now and then an en passant square anywhere, castling fields above 1, a
// second king, a pawn on an edge rank, a byte that is no piece.
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
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(CorpusPath, "rb"), &std::fclose);
    if (!file)
        GTEST_SKIP() << "corpus " << CorpusPath << " not found";
    PgnGameStorage storage;
    ASSERT_TRUE(storage.Allocated());
    PgnSource source;
    source.file = file.get();
    CorpusPositions corpus;
    PgnReadGames(source, storage.Game(), 0, nullptr, &CollectMainLine, reinterpret_cast<intptr_t>(&corpus));
    ASSERT_FALSE(corpus.positions.empty());
    std::mt19937 random(2025);
    for (size_t i = 0; i < corpus.positions.size(); ++i) {
        sPosition position = corpus.positions[i];
        MaybeSpoil(position, random);
        const Legal legal = PlainLegalMoves(position);
        // The game's move, or a legal one when the spoilt record refuses it.
        const uint32_t move = legal.moves.empty()            ? 0
                              : legal.found(corpus.moves[i]) ? corpus.moves[i]
                                                             : legal.moves[random() % legal.moves.size()];
        ExpectAgreement(position, move, legal, static_cast<int>(random() % 64));
        if (HasFatalFailure())
            return;
    }
}

}  // namespace
