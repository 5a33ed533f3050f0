// The exact position test on packed games (UnpackGame mode 2).
#include "tests/store/game_samples.h"

namespace {

class PositionPattern : public ::testing::Test {
protected:
    void SetUp() override
    {
        file_ = OvgOpenGamefile(dir_.File("pattern.ovg").c_str(), 1);
        ASSERT_NE(file_, 0u);
        for (size_t i = 0; i < SampleLines().size(); ++i) {
            WriteSample(game_, i, int32_t(i + 1));
            ASSERT_EQ(OvgWriteGame(game_, file_, 0, nullptr), int32_t(i + 1));
        }
        BuildDressedGame(game_);
        ASSERT_NE(OvgWriteGame(game_, file_, 0, nullptr), 0);
        ReadAll();
    }
    void TearDown() override { OvgCloseGamefile(file_); }

    void ReadAll()
    {
        games_ = OvgReadGames(file_, 0, buffer_.data(), places_.data(), int32_t(buffer_.size()), 100);
        ASSERT_EQ(games_, int32_t(SampleLines().size() + 1));
    }
    const uint8_t* Packed(int32_t k) const { return buffer_.data() + places_[k] - places_[0]; }

    // Numbers of the games that hold the pattern of `pattern`.
    std::vector<int32_t> Hits(uint32_t pattern)
    {
        std::vector<int32_t> hits;
        for (int32_t k = 0; k < games_; ++k) {
            const int32_t result = UnpackGame(pattern, Packed(k), 2);
            EXPECT_GE(result, 0);
            if (result > 0)
                hits.push_back(k + 1);
        }
        return hits;
    }

    // A pattern from the position after `moves` from the standard start.
    void PatternAfter(uint32_t pattern, const std::vector<std::string>& moves)
    {
        NewGameErase(pattern);
        ASSERT_EQ(Play(pattern, moves), int(moves.size()));
        ASSERT_EQ(PatExactPosition(pattern), 1);
    }

    TempDir dir_;
    uint32_t file_ = 0;
    GameHandle game_;
    std::vector<uint8_t> buffer_ = std::vector<uint8_t>(65536);
    std::vector<uint32_t> places_ = std::vector<uint32_t>(101);
    int32_t games_ = 0;
};

TEST_F(PositionPattern, SideToMoveCastlingAndEnPassantCount)
{
    GameHandle pattern;
    NewGameErase(pattern);
    ASSERT_EQ(Play(pattern, {"e2e4", "e7e5", "g1f3", "b8c6"}), 4);
    BoardRecord board = *IGGameGetBoard(pattern);
    const struct {
        int32_t castling, epFile, ply;
        std::vector<int32_t> hits;
    } cases[] = {{board.castling, 0, 10, {}}, {0, 0, 9, {}}, {board.castling, 0, 9, {1}}};
    for (const auto& c : cases) {
        ASSERT_EQ(BoardToInitialPosition(pattern, &board, c.castling, c.epFile, c.ply), 1);
        PatExactPosition(pattern);
        EXPECT_EQ(Hits(pattern), c.hits) << c.castling << " " << c.ply;
    }
    // After 1. e4 no black pawn can take: a pattern with the e-file flag is another position.
    NewGameErase(pattern);
    Play(pattern, {"e2e4"});
    board = *IGGameGetBoard(pattern);
    ASSERT_EQ(BoardToInitialPosition(pattern, &board, board.castling, 5, 2), 1);
    PatExactPosition(pattern);
    EXPECT_TRUE(Hits(pattern).empty());
}

TEST_F(PositionPattern, AHitLoadsTheGameAMissItsHeaderAndTheDeletedMarkTravels)
{
    GameHandle pattern;
    PatternAfter(pattern, {"f2f3", "e7e5", "g2g4", "d8h4"});
    EXPECT_EQ(UnpackGame(pattern, Packed(5), 2), 1);
    EXPECT_EQ(MainLine(pattern), SampleLines()[5]);
    EXPECT_EQ(IGGameGetCM(pattern), 1);
    EXPECT_EQ(UnpackGame(pattern, Packed(1), 2), 0);
    EXPECT_EQ(IGGameGetRound(pattern), 2) << "a miss still loads the header";
    NewGameErase(pattern);
    EXPECT_EQ(UnpackGame(pattern, Packed(5), 2), 1) << "erasing keeps the pattern";

    GameHandle fresh;
    EXPECT_EQ(UnpackGame(fresh, Packed(0), 2), -1) << "no pattern set";
    EXPECT_EQ(UnpackGame(fresh, Packed(0), 1), -1);

    ASSERT_EQ(OvgDeleteGame(file_, 3), 0);
    ReadAll();
    PatternAfter(pattern, {});
    for (int32_t k = 0; k < games_; ++k) {
        ASSERT_EQ(UnpackGame(pattern, Packed(k), 2), k == 7 ? 0 : 1);
        EXPECT_EQ(IGGameGetStatus(pattern, OvgStatusDeleted), k == 2 ? 1 : 0);
    }
}

}  // namespace
