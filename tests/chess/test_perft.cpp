// Perft node counts of well-known test positions: every rule of the generator and of move
// application has to be right for these totals to come out.
#include <gtest/gtest.h>

#include <cstring>
#include <ostream>

#include "tests/chess/fen_setter.h"

namespace {

struct PerftCase { const char* fen; int depth; uint64_t nodes; };

void PrintTo(const PerftCase& c, std::ostream* out) { *out << c.fen << " depth " << c.depth; }

class PerftCount : public ::testing::TestWithParam<PerftCase> {};

TEST_P(PerftCount, MatchesPublishedTotal)
{
    sPosition position = PositionFromFen(GetParam().fen);
    const sPosition before = position;
    EXPECT_EQ(Perft(position, GetParam().depth), GetParam().nodes);
    EXPECT_EQ(std::memcmp(&position, &before, sizeof position), 0) << "the walk changed the root record";
}

INSTANTIATE_TEST_SUITE_P(
    KnownPositions, PerftCount,
    ::testing::Values(PerftCase{"rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq -", 5, 4865609},
                      PerftCase{"r3k2r/p1ppqpb1/bn2pnp1/3PN3/1p2P3/2N2Q1p/PPPBBPPP/R3K2R w KQkq -", 4, 4085603},
                      PerftCase{"8/2p5/3p4/KP5r/1R3p1k/8/4P1P1/8 w - -", 5, 674624},
                      PerftCase{"r3k2r/Pppp1ppp/1b3nbN/nP6/BBP1P3/q4N2/Pp1P2PP/R2Q1RK1 w kq -", 4, 422333}));

}  // namespace
