// Walking through the game in a game buffer: the driver keeps the current
// position; these operations read its positions and moves in the public forms
// and move it back and forth.
#include <algorithm>
#include <cstdint>

#include "chess/position.h"
#include "orvan.h"
#include "siblings/game_driver.h"

namespace {

// The move of a tree node as a PackedMove; 0 for a node that holds none.
PackedMove PackedMoveOf(uint32_t move)
{
    MoveXY xy{};
    if (IGMoveGetXY(move, &xy) == 0)
        return 0;
    return static_cast<PackedMove>(
        PackMove(xy.fromFile, xy.fromRank, xy.toFile, xy.toRank, xy.promotion));
}

}  // namespace

int32_t OvGetInitialPos(OvGameBuffer game, sPosition* position)
{
    if (position == nullptr)
        return GetInitialPosition(game, nullptr);
    BoardRecord board{};
    const int32_t result = GetInitialPosition(game, &board);
    if (result == 0)  // no such game buffer: the caller's record stays as it was
        return 0;
    // An initial position keeps its en passant square only if a pawn can use it.
    PositionFromBoard(position, &board, 1);
    return result;
}

int32_t OvGetCurrentPos(OvGameBuffer game, sPosition* position)
{
    if (position == nullptr)
        return 0;
    const BoardRecord* board = IGGameGetBoard(game);
    if (board == nullptr)
        return 0;
    PositionFromBoard(position, board, 0);
    return 1;
}

int32_t OvGetMoves(OvGameBuffer game, PackedMove* moves, int32_t maxMoves)
{
    const uint32_t root = IGGameGetFirstMove(game);
    if (root == 0 || maxMoves <= 0 || moves == nullptr)
        return 0;
    int32_t count = 0;
    for (uint32_t move = IGMoveGetNEXT(root); move != 0; move = IGMoveGetNEXT(move)) {
        moves[count++] = PackedMoveOf(move);
        if (count == maxMoves)
            break;
    }
    return count;
}

int32_t OvGetNextMove(OvGameBuffer game)
{
    const uint32_t move = IGNextMove(game);
    return move == 0 ? 0 : PackedMoveOf(move);
}

int32_t OvPlayMoves(OvGameBuffer game, int32_t count)
{
    return PlayMoves(game, count);
}

int32_t OvGotoMove(OvGameBuffer game, int32_t ply)
{
    // The step is worked out wide: a ply far out of range must not overflow,
    // and a step beyond 32 bits walks to the same end as the widest one.
    const int64_t step = int64_t{ply} - IGGameGetCM(game) + 1;
    return PlayMoves(game, static_cast<int32_t>(std::clamp<int64_t>(step, INT32_MIN, INT32_MAX)));
}
