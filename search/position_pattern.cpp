// The position a position search looks for, set up as the game store's
// exact pattern, and the board comparison of the key and position search.
#include <cstring>

#include "chess/position.h"
#include "pgn/read/game_builder.h"
#include "search/search_drivers.h"
#include "siblings/game_driver.h"

void ArmPositionPattern(OvGameBuffer game, const sPosition& position)
{
    NewGameErase(game);  // the standard start, already the initial position
    if (IsStartPosition(&position) == 0)
        PutPgnStartPosition(position, 0, game);
    PatExactPosition(game);
}

int32_t SameBoard(const BoardRecord* first, const BoardRecord* second)
{
    if (first == nullptr || second == nullptr)
        return 0;
    return std::memcmp(first->squares, second->squares, sizeof first->squares) == 0 &&
                   first->sideToMove == second->sideToMove && first->epFile == second->epFile &&
                   first->castling == second->castling
               ? 1
               : 0;
}
