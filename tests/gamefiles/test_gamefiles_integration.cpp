// Game files, single games and walking through the library against the real
// game store and key database, in a fresh directory per test.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "chess/position.h"
#include "orvan.h"
#include "siblings/key_database.h"
#include "tests/store/store_helpers.h"

namespace {

// The driver is installed once for the program, as the library's load does.
class DriverEnvironment : public ::testing::Environment {
public:
    void SetUp() override
    {
        IGInstallGameDriver(0);
        IGGameDriverInit(32000);
    }
    void TearDown() override
    {
        IGGameDriverFini();
        IGRemoveGameDriver();
    }
};
const auto* const driver = ::testing::AddGlobalTestEnvironment(new DriverEnvironment);

constexpr PackedMove OpeningWords[] = {0x1C0C, 0x2434, 0x1506, 0x2A39};

class GamefilesIntegration : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_NE(game, 0u);
        ASSERT_EQ(Play(game, {"e2e4", "e7e5", "g1f3", "b8c6"}), 4);  // the four opening moves
    }
    void TearDown() override { OvFreeGameBuffer(game); }

    TempDir dir;
    OvGameBuffer game = OvAllocGameBuffer();
};

TEST_F(GamefilesIntegration, WrittenGamesComeBackAndWalk)
{
    const std::string path = dir.File("games.ovg");
    OvGameFile file = OvCreateGamefile(path.c_str());
    ASSERT_EQ(OvGetGamesCount(file), 0);

    int32_t out = 0;
    EXPECT_EQ(OvWriteGame(game, file, &out), 1);
    EXPECT_EQ(out, 1);
    SetUpPosition(game, "8/P7/7k/8/8/8/8/4K3", 1);  // and the promotion a7-a8 to a knight
    ASSERT_EQ(Play(game, {"a7a8n"}), 1);
    EXPECT_EQ(OvWriteGame(game, file, nullptr), 2);
    EXPECT_EQ(OvCloseGamefile(file), 1);

    file = OvOpenGamefile(path.c_str());
    ASSERT_EQ(OvGetGamesCount(file), 2);

    ASSERT_EQ(OvReadGame(game, file, 1), 1);
    EXPECT_EQ(IGGameGetSourceLoadnumber(game), 1);
    PackedMove moves[8] = {};
    ASSERT_EQ(OvGetMoves(game, moves, 8), 4);
    EXPECT_EQ(std::vector<PackedMove>(moves, moves + 4),
              std::vector<PackedMove>(std::begin(OpeningWords), std::end(OpeningWords)));
    sPosition position{};
    EXPECT_EQ(OvGetInitialPos(game, &position), 1);
    EXPECT_EQ(IsStartPosition(&position), 1);

    // Forward, to the end and back to the start.
    EXPECT_EQ(OvPlayMoves(game, 2), 2);
    ASSERT_EQ(OvGetCurrentPos(game, &position), 1);
    EXPECT_TRUE(position.board[28] == OV_WHITE_PAWN && position.board[36] == OV_BLACK_PAWN) << "e4 and e5";
    EXPECT_EQ(OvGetNextMove(game), OpeningWords[2]);
    EXPECT_EQ(OvGotoMove(game, 100), 2);
    EXPECT_EQ(OvGotoMove(game, 0), 4);
    ASSERT_EQ(OvGetCurrentPos(game, &position), 1);
    EXPECT_EQ(IsStartPosition(&position), 1);

    // The set-up game with its promotion; a refused number leaves the game
    // and its recorded source number as they were.
    ASSERT_EQ(OvReadGame(game, file, 2), 1);
    EXPECT_EQ(OvGetInitialPos(game, &position), 2);
    EXPECT_EQ(position.board[48], OV_WHITE_PAWN) << "a7";
    EXPECT_TRUE(OvGetMoves(game, moves, 8) == 1 && moves[0] == 0xF830);
    EXPECT_EQ(OvReadGame(game, file, 3) + OvReadGameHeader(game, file, 0), 0);
    EXPECT_EQ(IGGameGetSourceLoadnumber(game), 2);
    EXPECT_EQ(OvGetMoves(game, moves, 8), 1) << "the loaded game is still there";
    EXPECT_EQ(OvReadGameHeader(game, file, 1), 1);
    EXPECT_EQ(IGGameGetSourceLoadnumber(game), 1);
    EXPECT_EQ(OvCloseGamefile(file), 1);
}

TEST_F(GamefilesIntegration, BulkWritesDeleteMarksAndStatusBits)
{
    const OvGameFile file = OvCreateGamefile(dir.File("bulk.ovg").c_str());
    ASSERT_NE(file, 0u);
    EXPECT_EQ(OvStartBulkOperation(file, OV_BULK_WRITE), 1);
    EXPECT_EQ(OvFileStatus(file, 0), OV_FILE_OPEN | OV_FILE_IN_BULK);
    for (int32_t i = 1; i <= 5; ++i)
        EXPECT_EQ(OvWriteGame(game, file, nullptr), i);
    EXPECT_EQ(OvEndBulkOperation(file), 1);
    EXPECT_EQ(OvDeleteGame(file, 3), 1);
    EXPECT_EQ(OvFileStatus(file, 0), OV_FILE_OPEN) << "only the open and bulk bits pass";
    for (const int32_t deleted : {1, 0}) {
        ASSERT_EQ(OvReadGameHeader(game, file, 3), 1);
        EXPECT_EQ(IGGameGetStatus(game, OvgStatusDeleted), deleted);
        EXPECT_EQ(OvUndeleteGame(file, 3), 1);
    }
    EXPECT_EQ(OvDeleteGame(file, 6), 0);
    EXPECT_EQ(OvCloseGamefile(file), 1);
}

TEST_F(GamefilesIntegration, GamesOfTheDatabaseFileGoThroughTheKeyDatabase)
{
    const std::string path = dir.File("base.ovg");
    ASSERT_EQ(OvOpenDatabase(path.c_str(), OV_KEYDB_CREATE), 1);
    const OvGameFile file = OvOpenGamefile(path.c_str());
    ASSERT_NE(IDIsDatabaseGamefile(file), 0);
    EXPECT_EQ(OvWriteGame(game, file, nullptr), 1);
    EXPECT_EQ(OvDeleteGame(file, 1), 1);
    EXPECT_EQ(OvCloseGamefile(file), 1);
    EXPECT_EQ(OvCloseDatabase(0), 1);

    // Creating a game file of that name removes the database's key files, so
    // that the database can no longer be opened as an existing one.
    EXPECT_EQ(OvOpenDatabase(path.c_str(), OV_KEYDB_OPEN_EXISTING), 1);
    EXPECT_EQ(OvCloseDatabase(0), 1);
    const OvGameFile fresh = OvCreateGamefile(path.c_str());
    EXPECT_EQ(OvGetGamesCount(fresh), 0);
    EXPECT_EQ(OvCloseGamefile(fresh), 1);
    EXPECT_EQ(OvOpenDatabase(path.c_str(), OV_KEYDB_OPEN_EXISTING), 0);
}

}  // namespace
