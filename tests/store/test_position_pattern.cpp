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

    // A pattern from the position after `moves`, from the standard start or
    // from the board of `pieces`.
    void PatternAfter(uint32_t pattern, const std::vector<std::string>& moves, const char* pieces = nullptr)
    {
        NewGameErase(pattern);
        if (pieces != nullptr) {
            const BoardRecord board = BoardFromPieces(pieces);
            ASSERT_EQ(BoardToInitialPosition(pattern, &board, 0xF0, 4, 21), 1);
        }
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

TEST_F(PositionPattern, FindsPositionsOfMainLinesSideLinesAndTranspositions)
{
    GameHandle pattern;
    const struct {
        std::vector<std::string> moves;
        const char* pieces;
        std::vector<int32_t> hits;
    } cases[] = {
        {{"g1f3", "c7c5", "e2e4", "d7d6"}, nullptr, {3}},  // 1. e4 c5 2. Nf3 d6 by another order
        {{}, nullptr, {1, 2, 3, 4, 5, 6, 7}},
        {{"a2a3"}, nullptr, {}},
        // The dressed game's side line 1... O-O 2. O-O-O.
        {{"e5d6", "e8g8", "e1c1"}, "r3k2r/pp3ppp/8/3pP3/8/8/PPP2PPP/R3K2R", {8}},
    };
    for (const auto& c : cases) {
        PatternAfter(pattern, c.moves, c.pieces);
        EXPECT_EQ(Hits(pattern), c.hits) << c.moves.size();
    }
}

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
