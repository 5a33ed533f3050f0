// The fake game driver: game files answer from `results`, game buffers hold
// the FakeGame a test lays out.
#include <algorithm>

#include "fakes/fake_siblings.h"
#include "siblings/game_driver.h"

namespace {

// The handle of node `index` of game buffer `game`'s move tree: 0 is the root,
// n the n-th move of the main line.
uint32_t FakeMoveHandle(uint32_t game, int32_t index)
{
    return (game << 16) | static_cast<uint32_t>(index);
}

FakeGame* FindGame(uint32_t game)
{
    auto found = Fakes().games.find(game);
    return found == Fakes().games.end() ? nullptr : &found->second;
}

// The game and main line index a move handle names; null for a bad handle.
FakeGame* FindMove(uint32_t move, int32_t& index)
{
    FakeGame* game = FindGame(move >> 16);
    index = static_cast<int32_t>(move & 0xFFFF);
    if (game == nullptr || index > static_cast<int32_t>(game->mainLine.size()))
        return nullptr;
    return game;
}

}  // namespace

// ---- Driver life ----

int32_t IGInstallGameDriver(int32_t mode) FAKE_ANSWER(IGInstallGameDriver, 0, FakeArg(mode))
int32_t IGGameDriverInit(int32_t maxGames) FAKE_ANSWER(IGGameDriverInit, 0, FakeArg(maxGames))
int32_t IGGameDriverFini(void) FAKE_ANSWER(IGGameDriverFini, 0, )
int32_t IGRemoveGameDriver(void) FAKE_ANSWER(IGRemoveGameDriver, 0, )

int32_t OvgGetVersion(uint32_t* version, uint32_t* second)
{
    Fakes().calls.push_back("OvgGetVersion");
    return FakeVersion(version, second, Fakes().gameVersionWord, 1);
}

// ---- Game files ----

uint32_t OvgOpenGamefile(const char* path, int32_t create)
{
    return static_cast<uint32_t>(
        AnswerCall("OvgOpenGamefile", 100, {FakeArg(path), FakeArg(create)}));
}

int32_t OvgCloseGamefile(uint32_t file) FAKE_ANSWER(OvgCloseGamefile, 1, FakeArg(file))
int32_t OvgGetNumberOfGames(uint32_t file) FAKE_ANSWER(OvgGetNumberOfGames, 0, FakeArg(file))
int32_t IGFileStatus(uint32_t file, int32_t mask) FAKE_ANSWER(IGFileStatus, 0, FakeArg(file), FakeArg(mask))
int32_t OvgFileAction(uint32_t file, int32_t action) FAKE_ANSWER(OvgFileAction, 1, FakeArg(file), FakeArg(action))

// ---- Stored games ----

int32_t OvgLoadGame(uint32_t game, uint32_t file, int32_t number, int32_t mode)
{
    RecordCall("OvgLoadGame", {FakeArg(game), FakeArg(file), FakeArg(number), FakeArg(mode)});
    FakeGame* loaded = FindGame(game);
    if (loaded == nullptr)
        return 0;
    loaded->played = 0;
    return FakeResult("OvgLoadGame", 1);
}

int32_t OvgLoadGameHeader(uint32_t game, uint32_t file, int32_t number)
{
    RecordCall("OvgLoadGameHeader", {FakeArg(game), FakeArg(file), FakeArg(number)});
    return FindGame(game) == nullptr ? 0 : FakeResult("OvgLoadGameHeader", 1);
}

int32_t OvgWriteGame(uint32_t game, uint32_t file, int32_t mode, int32_t* out)
{
    RecordCall("OvgWriteGame", {FakeArg(game), FakeArg(file), FakeArg(mode), FakeArg(out)});
    const int32_t number = FakeResult("OvgWriteGame", 1);
    if (out != nullptr && number != 0)
        *out = number;
    return number;
}

int32_t OvgDeleteGame(uint32_t file, int32_t number) FAKE_ANSWER(OvgDeleteGame, 0, FakeArg(file), FakeArg(number))
int32_t OvgUndeleteGame(uint32_t file, int32_t number) FAKE_ANSWER(OvgUndeleteGame, 0, FakeArg(file), FakeArg(number))

// ---- Game buffer ----

uint32_t IGGameOpenGame(void)
{
    RecordCall("IGGameOpenGame", {});
    if (Fakes().results.contains("IGGameOpenGame"))
        return static_cast<uint32_t>(FakeResult("IGGameOpenGame", 0));
    const uint32_t game = Fakes().nextGame++;
    Fakes().games[game] = FakeGame{};
    return game;
}

int32_t IGGameCloseGame(uint32_t game)
{
    RecordCall("IGGameCloseGame", {FakeArg(game)});
    return Fakes().games.erase(game) > 0 ? 1 : 0;
}

int32_t IGGamePutSourceLoadnumber(uint32_t game, int32_t number)
{
    RecordCall("IGGamePutSourceLoadnumber", {FakeArg(game), FakeArg(number)});
    FakeGame* target = FindGame(game);
    if (target == nullptr)
        return 0;
    target->sourceNumber = number;
    return 1;
}

// ---- Board ----

const BoardRecord* IGGameGetBoard(uint32_t game)
{
    RecordCall("IGGameGetBoard", {FakeArg(game)});
    FakeGame* current = FindGame(game);
    return current == nullptr ? nullptr : &current->currentBoard;
}

int32_t GetInitialPosition(uint32_t game, BoardRecord* board)
{
    RecordCall("GetInitialPosition", {FakeArg(game), FakeArg(board)});
    const FakeGame* initial = FindGame(game);
    if (initial == nullptr)
        return 0;
    if (board != nullptr)
        *board = initial->initialBoard;
    return FakeResult("GetInitialPosition", 1);
}

// ---- Walking: along the main line only ----

int32_t PlayMoves(uint32_t game, int32_t count)
{
    RecordCall("PlayMoves", {FakeArg(game), FakeArg(count)});
    FakeGame* walked = FindGame(game);
    if (walked == nullptr)
        return 0;
    const int64_t target = std::clamp<int64_t>(int64_t{walked->played} + count, 0,
                                               static_cast<int64_t>(walked->mainLine.size()));
    const int32_t moved = static_cast<int32_t>(target > walked->played ? target - walked->played
                                                                       : walked->played - target);
    walked->played = static_cast<int32_t>(target);
    return moved;
}

int32_t IGGameGetCM(uint32_t game)
{
    RecordCall("IGGameGetCM", {FakeArg(game)});
    const FakeGame* walked = FindGame(game);
    return walked == nullptr ? 0 : walked->played + 1;
}

uint32_t IGNextMove(uint32_t game)
{
    RecordCall("IGNextMove", {FakeArg(game)});
    const FakeGame* walked = FindGame(game);
    if (walked == nullptr || walked->played >= static_cast<int32_t>(walked->mainLine.size()))
        return 0;
    return FakeMoveHandle(game, walked->played + 1);
}

// ---- Move tree: the root and the main line ----

uint32_t IGGameGetFirstMove(uint32_t game)
{
    RecordCall("IGGameGetFirstMove", {FakeArg(game)});
    const FakeGame* tree = FindGame(game);
    return tree == nullptr || tree->mainLine.empty() ? 0 : FakeMoveHandle(game, 0);
}

uint32_t IGMoveGetNEXT(uint32_t move)
{
    RecordCall("IGMoveGetNEXT", {FakeArg(move)});
    int32_t index = 0;
    const FakeGame* tree = FindMove(move, index);
    if (tree == nullptr || index >= static_cast<int32_t>(tree->mainLine.size()))
        return 0;
    return move + 1;
}

int32_t IGMoveGetXY(uint32_t move, MoveXY* xy)
{
    RecordCall("IGMoveGetXY", {FakeArg(move), FakeArg(xy)});
    int32_t index = 0;
    const FakeGame* tree = FindMove(move, index);
    if (tree == nullptr || index == 0 || xy == nullptr)
        return 0;
    *xy = tree->mainLine[static_cast<size_t>(index - 1)];
    return 1;
}
