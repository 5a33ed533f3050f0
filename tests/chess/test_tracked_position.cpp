// A tracked position against the bare record, along the corpus main lines and random play mixing
// legal moves with any words: the state equals a fresh reading, the answers those of the bare record.
#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <vector>

#include "chess/move_generator.h"
#include "chess/tracked_position.h"
#include "tests/chess/corpus_games.h"
#include "tests/chess/fen_setter.h"
#include "tests/chess/plain_generator.h"

namespace {

constexpr size_t TrackedGameLimit = 3000;

bool SameView(const BoardView& a, const BoardView& b)
{
    return a.kinds == b.kinds && a.white == b.white && a.black == b.black && a.occupied == b.occupied &&
           a.whiteToMove == b.whiteToMove && a.epSquare == b.epSquare && a.shortCastling == b.shortCastling &&
           a.longCastling == b.longCastling;
}

// The tracked state equals a fresh reading of its record, which equals `bare`.
void ExpectFresh(const TrackedPosition& tracked, const sPosition& bare)
{
    ASSERT_EQ(std::memcmp(&tracked.record, &bare, sizeof bare), 0);
    BoardView view;
    ASSERT_EQ(tracked.ordinary, ReadOrdinaryView(bare, view));
    if (!tracked.ordinary)
        return;
    ASSERT_TRUE(SameView(tracked.view, view));
    const KingGuard guard = GuardOfSideToMove(view);
    ASSERT_EQ(tracked.guard.king, guard.king);
    ASSERT_EQ(tracked.guard.checkers, guard.checkers);
}

// Asks both for every target of `probeFrom`, describes `move` on both, then plays it on both.
void StepBoth(TrackedPosition& tracked, sPosition& bare, int probeFrom, uint32_t move)
{
    for (int to = 0; to < 64; ++to) {
        const uint32_t probe = Move(probeFrom, to);
        ASSERT_EQ(TrackedMoveIsLegal(tracked, probe), MoveIsLegal(&bare, probe) != 0) << probeFrom << "-" << to;
    }
    // The men of each piece kind that may go to the probed square, as a set.
    for (int kind = KnightKind; kind <= QueenKind; ++kind)
        ASSERT_EQ(TrackedPieceOrigins(tracked, kind, probeFrom), PieceOriginsOnRecord(bare, kind, probeFrom))
            << kind << " to " << probeFrom;
    const int32_t info = OvGetMoveInfo(&bare, move);
    // Without the stalemate search a stalemate has no outcome bits.
    TrackedPosition withoutStalemate = tracked;
    const int32_t outcome = info & OV_MOVE_OUTCOME_MASK;
    ASSERT_EQ(DescribeTrackedMove(withoutStalemate, move, false),
              outcome == OV_MOVE_STALEMATE ? info & ~OV_MOVE_OUTCOME_MASK : info)
        << std::hex << move;
    ASSERT_EQ(DescribeTrackedMove(tracked, move), info) << std::hex << move;
    ApplyMove(&bare, move);
    ExpectFresh(tracked, bare);
}

TEST(TrackedPosition, AgreesWithTheBareRecordOnRealGames)
{
    size_t games = 0;
    const bool read = VisitCorpusGames([&](const PgnGame& game) {
        TrackedPosition tracked;
        TrackPosition(tracked, *game.position);
        sPosition bare = *game.position;
        for (uint32_t i = 0; i < game.moveCount && !HasFatalFailure(); ++i)
            StepBoth(tracked, bare, static_cast<int>(i % 64), game.moves[i] & ~uint32_t{MoveBranch | MoveLineEnd});
        return ++games < TrackedGameLimit && !HasFatalFailure();
    });
    if (!read)
        GTEST_SKIP() << "corpus " << CorpusPath << " not found";
    EXPECT_GT(games, 0u);
}

TEST(TrackedPosition, AgreesWithTheBareRecordInRandomPlay)
{
    const char* starts[] = {
        "r3k2r/p1ppqpb1/bn2pnp1/3PN3/1p2P3/2N2Q1p/PPPBBPPP/R3K2R w KQkq -",
        "r3k2r/Pppp1ppp/1b3nbN/nP6/BBP1P3/q4N2/Pp1P2PP/R2Q1RK1 w kq -",
        "4k3/1P4p1/8/3pP3/8/8/1p4P1/4K3 w - d6",
        "8/2p5/3p4/KP5r/1R3p1k/8/4P1P1/8 w - -",
    };
    std::mt19937 random(7);
    for (int line = 0; line < 400; ++line) {
        sPosition bare = PositionFromFen(starts[line % std::size(starts)]);
        if (line % 5 == 4)
            bare.epSquare = static_cast<uint8_t>(random() % 70);
        TrackedPosition tracked;
        TrackPosition(tracked, bare);
        ASSERT_NO_FATAL_FAILURE(ExpectFresh(tracked, bare));
        for (int ply = 0; ply < 120; ++ply) {
            std::vector<uint32_t> legal;
            for (int from = 0; from < 64; ++from)
                for (int to : PlainDestinations(bare, from))
                    legal.push_back(static_cast<uint32_t>(from | to << 8 | (random() % 4) << 14));
            // Now and then, or when there is no legal move, any word at all.
            const uint32_t move = legal.empty() || random() % 12 == 0 ? random() & 0xFFFF
                                                                        : legal[random() % legal.size()];
            ASSERT_NO_FATAL_FAILURE(StepBoth(tracked, bare, static_cast<int>(random() % 64), move));
        }
    }
}

}  // namespace
