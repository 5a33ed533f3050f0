#include "keydb/key_test_support.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "ovkey/key_tree.h"
#include "siblings/game_driver.h"
#include "siblings/key_database.h"

namespace {

// The game store is set up once for the whole test program, as the access
// library does at load.
class DriverEnvironment : public ::testing::Environment {
public:
    void SetUp() override
    {
        IGInstallGameDriver(0);
        IGGameDriverInit(1000);
    }
    void TearDown() override
    {
        IGGameDriverFini();
        IGRemoveGameDriver();
    }
};
const auto* const driverEnvironment = ::testing::AddGlobalTestEnvironment(new DriverEnvironment);

uint8_t Square(char file, char rank)
{
    return static_cast<uint8_t>(BoardIndex(file - 'a', rank - '1'));
}

}  // namespace

BoardLine PlayLine(std::initializer_list<const char*> moves)
{
    BoardLine line;
    IGNewBoard(&line.board);
    BoardRecord& b = line.board;
    for (const char* move : moves) {
        const uint8_t from = Square(move[0], move[1]);
        const uint8_t to = Square(move[2], move[3]);
        const uint8_t piece = b.squares[from];
        b.squares[to] = piece;
        b.squares[from] = DrvEmpty;
        const bool pawn = piece == DrvWhitePawn || piece == DrvBlackPawn;
        b.epFile = pawn && std::abs(move[3] - move[1]) == 2 ? move[0] - 'a' + 1 : 0;
        b.sideToMove = b.sideToMove == 1 ? 0 : 1;
        ++b.ply;
        const int fromSquare = 8 * (move[1] - '1') + (move[0] - 'a');
        const int toSquare = 8 * (move[3] - '1') + (move[2] - 'a');
        line.moves.push_back(static_cast<PackedMove>(fromSquare | (toSquare << 8)));
    }
    return line;
}

void WriteFile(const std::string& path, const std::string& text)
{
    std::ofstream(path, std::ios::binary | std::ios::trunc) << text;
}

bool FileExists(const std::string& path)
{
    return std::filesystem::exists(path);
}

void KeyTreeTest::SetUp()
{
    ASSERT_FALSE(scratch.Path().empty());
    gameFile = scratch.Path() + "/games.ovg";
    ASSERT_EQ(IDOpenBase(gameFile.c_str(), OV_KEYDB_CREATE, 0), OVK_OPEN_OK);

    auto add = [](const char* code, const char* name, int32_t parent, const BoardLine& line) {
        return ovkey::AddKey({code, name, std::string("remark ") + code, &line.board, parent,
                              line.moves});
    };
    ovkey::KeyTreeBatch batch;
    start = add("A00", "Start", 0, PlayLine({}));
    e4 = add("B00", "King's pawn", start, PlayLine({"e2e4"}));
    sicilian = add("B20", "Sicilian", e4, PlayLine({"e2e4", "c7c5"}));
    nf3 = add("B27", "Sicilian: 2.Nf3", sicilian, PlayLine({"e2e4", "c7c5", "g1f3"}));
    open = add("C20", "Open game", e4, PlayLine({"e2e4", "e7e5"}));
    d4 = add("A40", "Queen's pawn", start, PlayLine({"d2d4"}));
    d5 = add("D00", "Closed game", d4, PlayLine({"d2d4", "d7d5"}));
    for (int32_t key : {start, e4, sicilian, nf3, open, d4, d5})
        ASSERT_NE(key, 0);
}

void KeyTreeTest::TearDown()
{
    IDCloseBase(0);
}
