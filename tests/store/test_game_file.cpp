// Game files: writing, reopening, loading, batches, damaged
// files and refused handles.
#include <fstream>
#include <sstream>

#include "tests/store/game_samples.h"

namespace {

// All header fields of a buffer as one text, to compare two buffers.
std::string HeaderText(uint32_t game)
{
    std::ostringstream out;
    for (auto get : {IGGameGetPlace, IGGameGetSite, IGGameGetAnnotator, IGGameGetKeycode, IGGameGetRemark})
        out << get(game, nullptr) << '|';
    for (int side = 0; side < 2; ++side)
        for (auto get : {IGGameGetPlayer, IGGameGetCountry, IGGameGetTitle})
            out << get(game, side, nullptr) << '|';
    const int32_t* date = IGGameGetDate(game, nullptr);
    out << IGGameGetElo(game, 1) << IGGameGetTime(game, 0) << '|' << IGGameGetRound(game) << '|'
        << IGGameGetResult(game, 0) << '|' << date[0] << '.' << date[1] << '.' << date[2] << '|';
    for (int n = 0; n < 8; ++n)
        out << IGGameGetStatus(game, n);
    return out.str();
}

// Writes `games` sample games in one bulk operation; game n has round n.
void WriteSamples(uint32_t file, uint32_t game, int32_t games)
{
    ASSERT_EQ(OvgFileAction(file, 2), 1);
    for (int32_t n = 1; n <= games; ++n) {
        WriteSample(game, size_t(n), n);
        ASSERT_EQ(OvgWriteGame(game, file, 0, nullptr), n);
    }
    ASSERT_EQ(OvgFileAction(file, 0), 1);
}

TEST(GameFile, DressedGameSurvivesWriteCloseReopenAndLoad)
{
    TempDir dir;
    GameHandle game;
    BuildDressedGame(game);
    const std::string header = HeaderText(game);
    EXPECT_EQ(header, "Copenhagen Championship 1968|Copenhagen|Annotator|C26|Rossi, Ma\xA4" "a|"
                      "Lindqvist, Hanna|SWE|GM|Novak, Rosa|CZE|IM|204290|10|2|1993.5.4|01100010")
        << "each getter reads its own field";
    BoardRecord initial{};
    GetInitialPosition(game, &initial);
    {
        FileHandle file(dir.File("games.ovg"), 1);
        int32_t number = 0;
        EXPECT_EQ(OvgWriteGame(game, file, 0, &number), 1);
        EXPECT_EQ(number, 1);
        EXPECT_EQ(OvgOpenGamefile(dir.File("games.ovg").c_str(), 0), 0u) << "the file is in use";
    }
    FileHandle file(dir.File("games.ovg"), 0);
    ASSERT_EQ(OvgGetNumberOfGames(file), 1);
    GameHandle loaded;
    ASSERT_NE(OvgLoadGame(loaded, file, 1, 0), 0);
    EXPECT_EQ(HeaderText(loaded), header);
    EXPECT_EQ(DescribeTree(loaded),
              "{before the first move} e5d6 e8c8 (e8g8 e1c1{long castling }{for white} (d6d7 f8d8 ) ) "
              "e1g1 d8d6 a2a4!? ");
    BoardRecord loadedInitial{};
    EXPECT_EQ(GetInitialPosition(loaded, &loadedInitial), 2);
    EXPECT_EQ(std::memcmp(&loadedInitial, &initial, sizeof initial), 0);
    EXPECT_EQ(OvgLoadGame(loaded, file, 2, 0) + OvgLoadGame(loaded, file, 0, 0), 0);
    EXPECT_EQ(OvgLoadGame(loaded, file, 1, 1), 0) << "only mode 0 is known";
    NewGameErase(loaded);
    ASSERT_NE(OvgLoadGameHeader(loaded, file, 1), 0);
    EXPECT_EQ(IGGameGetGamelength(loaded), 5) << "the length comes with the header";
    EXPECT_EQ(IGGameGetFirstMove(loaded), 0u);
    ASSERT_EQ(OvgCloseGamefile(file.id), 1);
    EXPECT_STREQ(IGGameGetPlayer(loaded, 0, nullptr), "Lindqvist, Hanna") << "header texts outlive the file";
    EXPECT_EQ(HeaderText(loaded), header);
}

TEST(GameFile, BulkWrittenGamesReadBackInBatches)
{
    TempDir dir;
    GameHandle game;
    FileHandle file(dir.File("bulk.ovg"), 1);
    constexpr int32_t Games = 3000;
    WriteSamples(file, game, Games);

    std::vector<uint8_t> buffer(65536);
    std::vector<uint32_t> places(101);
    int32_t first = 0;
    for (int32_t n; (n = OvgReadGames(file, first, buffer.data(), places.data(), 65536, 100)) > 0; first += n)
        for (int32_t k = 0; k < n; ++k) {
            const int32_t number = first + k + 1;
            ASSERT_EQ(GetGameHeader(game, buffer.data() + places[k] - places[0], 0, 1), 1);
            ASSERT_EQ(IGGameGetRound(game), number);
            ASSERT_EQ(IGGameGetGamelength(game), int32_t(SampleLines()[size_t(number) % 7].size()));
        }
    EXPECT_EQ(first, Games);

    // A small buffer takes fewer games, and the next batch starts behind them.
    const int32_t n = OvgReadGames(file, 2000, buffer.data(), places.data(), 300, 100);
    ASSERT_GT(n, 0);
    ASSERT_LT(n, 100);
    EXPECT_LE(places[n] - places[0], 300u);
    ASSERT_EQ(OvgReadGames(file, 2000 + n, buffer.data(), places.data(), 65536, 1), 1);
    ASSERT_EQ(GetGameHeader(game, buffer.data(), 0, 1), 1);
    EXPECT_EQ(IGGameGetRound(game), 2001 + n);

    // A game too large for the batch comes without its comments.
    WriteSample(game, 0, 1);
    IGMovePutLComment(IGGameGetMovePtr(game), std::string(3000, 'c').c_str(), 1);
    ASSERT_EQ(OvgWriteGame(game, file, 0, nullptr), Games + 1);
    ASSERT_EQ(OvgReadGames(file, Games, buffer.data(), places.data(), 2000, 1), 1);
    ASSERT_EQ(UnpackGame(game, buffer.data(), 0), 1);
    EXPECT_EQ(MainLine(game), SampleLines()[0]);
    EXPECT_EQ(DescribeTree(game).find('{'), std::string::npos);
    EXPECT_EQ(OvgReadGames(file, Games, buffer.data(), places.data(), 10, 1), -1);
    ASSERT_EQ(OvgLoadGame(game, file, Games + 1, 0), 1);
    EXPECT_NE(DescribeTree(game).find("{ccc"), std::string::npos) << "the stored game keeps it";
}

TEST(GameFile, MissingDamagedAndCutFilesAreRefused)
{
    TempDir dir;
    std::ofstream(dir.File("bad.ovg"), std::ios::binary) << std::string(8192, '\x5a');
    EXPECT_EQ(OvgOpenGamefile(dir.File("bad.ovg").c_str(), 0), 0u);
    EXPECT_EQ(OvgOpenGamefile(dir.File("missing.ovg").c_str(), 0) + OvgOpenGamefile(nullptr, 1), 0u);

    GameHandle game;
    {
        FileHandle file(dir.File("cut.ovg"), 1);
        WriteSamples(file, game, 5000);
    }
    // A game file cut in half: refused at opening or at reading, never a crash.
    std::filesystem::resize_file(dir.File("cut.ovg"), std::filesystem::file_size(dir.File("cut.ovg")) / 2);
    if (const FileHandle file(dir.File("cut.ovg"), 0); file.id != 0) {
        int32_t loaded = 0;
        for (int32_t number = 1; number <= OvgGetNumberOfGames(file); ++number)
            loaded += OvgLoadGame(game, file, number, 0);
        EXPECT_LT(loaded, 5000) << "half a file cannot hold every game";
    }
    EXPECT_EQ(OvgGetNumberOfGames(FileHandle(dir.File("cut.ovg"), 1)), 0) << "creating replaces the file";
}

TEST(GameFile, InvalidHandlesAndArgumentsAreRefused)
{
    TempDir dir;
    GameHandle game;
    std::vector<uint8_t> buffer(1024);
    uint32_t places[2] = {};
    // The calls that bad handles do not already reach through the exports.
    EXPECT_EQ(OvgCloseGamefile(0xFFFFFFFFu) + OvgFileAction(0xFFFFFFFFu, 1), 0);
    EXPECT_EQ(OvgReadGames(0, 0, buffer.data(), places, 1024, 1), -1);
    FileHandle file(dir.File("open.ovg"), 1);
    EXPECT_EQ(OvgWriteGame(0, file, 0, nullptr) + OvgWriteGame(game, file, 1, nullptr) + OvgFileAction(file, 3), 0);
    EXPECT_EQ(OvgReadGames(file, 0, nullptr, places, 1024, 1), -1);
    EXPECT_EQ(OvgReadGames(file, -1, buffer.data(), places, 1024, 1), -1);
    // A packed game outlives its file only as refused data.
    WriteSample(game, 0, 1);
    OvgWriteGame(game, file, 0, nullptr);
    ASSERT_EQ(OvgReadGames(file, 0, buffer.data(), places, 1024, 1), 1);
    OvgCloseGamefile(file.id);
    EXPECT_EQ(GetGameHeader(game, buffer.data(), 0, 1), 0);
    EXPECT_EQ(UnpackGame(game, buffer.data(), 0), 0);
    EXPECT_EQ(GetGameHeader(game, nullptr, 0, 1), 0);
}

TEST(DriverLife, FiniClosesWhatTheHostLeftOpen)
{
    TempDir dir;
    const uint32_t file = OvgOpenGamefile(dir.File("left.ovg").c_str(), 1);
    const uint32_t game = IGGameOpenGame();
    WriteSample(game, 2, 1);
    OvgFileAction(file, 1);
    OvgWriteGame(game, file, 0, nullptr);
    EXPECT_EQ(IGGameDriverFini(), 0);
    EXPECT_EQ(OvgGetNumberOfGames(file), -1);
    EXPECT_EQ(NewGameErase(game), 0);
    EXPECT_EQ(OvgGetNumberOfGames(FileHandle(dir.File("left.ovg"), 0)), 1) << "the open bulk operation was ended";
    uint32_t version = 0;
    EXPECT_EQ(OvgGetVersion(&version, nullptr), 1);
    EXPECT_EQ(version, 0x00010000u);
}

}  // namespace
