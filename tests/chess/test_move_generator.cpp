// The move generator's castling quirks and move application. Attacks are checked by the perft
// totals, destination lists and their order by the plain generator comparisons.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <iterator>
#include <vector>

#include "chess/move_generator.h"
#include "chess/piece_codes.h"
#include "chess/position.h"
#include "tests/chess/fen_setter.h"

namespace {

using List = std::vector<int>;

// The castling destinations of the king of the side to move.
List Castlings(sPosition position)
{
    const int home = WhiteToMove(position) ? 4 : 60;
    int32_t list[MaxDestinations];
    List found;
    std::copy_if(list, list + GenerateDestinations(&position, home, list), std::back_inserter(found),
                 [home](int to) { return to == home + 2 || to == home - 2; });
    return found;
}

TEST(Destinations, Castling)
{
    const std::pair<const char*, List> cases[] = {
        {"1r2k3/8/8/8/8/8/8/R3K2R w KQ -", {6, 2}},  // b1 may be attacked
        {"4k3/8/8/8/8/8/8/R3K2B w KQ -", {2}}, {"r3k2r/8/8/8/8/8/8/1R2K3 b kq -", {62, 58}},
    };
    for (const auto& [fen, expected] : cases)
        EXPECT_EQ(Castlings(PositionFromFen(fen)), expected) << fen;
    // Any non-zero field allows castling; the rook square it names plays no part.
    sPosition position = PositionFromFen("4k3/8/8/8/8/8/8/R3K2R w - -");
    position.castleWhiteShort = 8;
    position.castleWhiteLong = 200;
    EXPECT_EQ(Castlings(position), (List{6, 2}));
}

TEST(ApplyMove, PlaysTheWordAsItStands)
{
    const struct { const char* fen; uint32_t move; const char* after; } cases[] = {
        {"4k3/p7/8/8/8/8/8/4K3 b - -", Move(48, 32), "4k3/8/8/p7/8/8/8/4K3 w - a6"},  // nobody to take
        // Castling without a rook on h1 still puts a rook on f1; the king move clears both rights.
        {"4k3/8/8/8/8/8/8/R3K3 w KQ -", Move(4, 6), "4k3/8/8/8/8/8/8/R4RK1 b - -"},
        {"4k3/8/8/8/8/8/8/4K2R w K -", Move(4, 7), "4k3/8/8/8/8/8/8/7K b - -"},  // onto its own rook
        // Marker bits change nothing; promotion bits count only for a promotion.
        {"4k3/8/8/8/8/8/8/R3K3 w Q -", Move(0, 1) | 0xC0 | 0xC000, "4k3/8/8/8/8/8/8/1R2K3 b - -"},
        // En passant is recognised by geometry, with or without the square.
        {"4k3/8/8/3pP3/8/8/8/4K3 w - -", Move(36, 43), "4k3/8/3P4/8/8/8/8/4K3 b - -"},
    };
    for (const auto& c : cases) {
        sPosition position = PositionFromFen(c.fen);
        ApplyMove(&position, c.move);
        const sPosition expected = PositionFromFen(c.after);
        EXPECT_EQ(std::memcmp(&position, &expected, sizeof position), 0) << c.fen << " " << std::hex << c.move;
    }
    // The word 0 (a1-a1 on an empty a1) and a null record change nothing.
    sPosition position = StartPosition;
    ApplyMove(&position, 0xFFFF0000);
    ApplyMove(nullptr, Move(12, 28));
    EXPECT_EQ(OvPlayMove(&position, 0), 1);
    EXPECT_EQ(IsStartPosition(&position), 1);

    // A field of n names its rook on square n - 1: leaving that square clears
    // it, leaving the corner does not.
    position = PositionFromFen("4k3/8/8/8/8/8/8/1R2K2R w - -");
    position.castleWhiteLong = 2;
    position.castleWhiteShort = 1;
    for (const auto& [move, fields] : {std::pair{Move(7, 15), std::pair{2, 0}}, {Move(1, 9), {0, 1}}}) {
        sPosition played = position;
        ApplyMove(&played, move);
        EXPECT_EQ((std::pair<int, int>(played.castleWhiteLong, played.castleWhiteShort)), fields) << move;
    }
}

}  // namespace
