#include "tests/chess/plain_generator.h"

#include <algorithm>
#include <cstdlib>

#include "chess/move_generator.h"
#include "chess/move_notation.h"

namespace {

// Whether `from + step` is on the board and at most `files` files away, so
// that the step has not wrapped round an edge.
bool StepStays(int from, int step, int files)
{
    const int to = from + step;
    return to >= 0 && to < 64 && std::abs((to & 7) - (from & 7)) <= files;
}

}  // namespace

std::vector<int> PlainDestinations(const sPosition& position, int from)
{
    const uint8_t piece = position.board[from];
    const bool white = (position.sideToMove & 1) != 0;
    const auto isEnemy = [&](uint8_t code) { return white ? code >= 1 && code <= 6 : code >= 9 && code <= 14; };
    const auto isFree = [&](uint8_t code) { return code == 0 || isEnemy(code); };
    std::vector<int> found;
    const auto tryMove = [&](int to) {
        sPosition trial = position;
        if (MoveKeepsKingSafe(&trial, from, to))
            found.push_back(to);
    };
    if (!(white ? piece >= 9 && piece <= 14 : piece >= 1 && piece <= 6))
        return found;
    const int kind = piece & 7;
    if (kind == 1) {
        if (white ? from >= 56 : from < 8)
            return found;
        const int forward = white ? 8 : -8;
        const auto capture = [&](int step, bool allowed) {
            if (!allowed)
                return;
            if (isEnemy(position.board[from + step]))
                tryMove(from + step);
            if (from + step == position.epSquare && isFree(position.board[from + step]))
                tryMove(from + step);
        };
        capture(white ? 7 : -7, white ? (from & 7) != 0 : (from & 7) != 7);
        if (position.board[from + forward] == 0) {
            tryMove(from + forward);
            if ((white ? from < 16 : from >= 48) && position.board[from + 2 * forward] == 0)
                tryMove(from + 2 * forward);
        }
        capture(white ? 9 : -9, white ? (from & 7) != 7 : (from & 7) != 0);
        return found;
    }
    if (kind == 2) {
        for (int step : {6, 15, 17, 10, -6, -15, -17, -10})
            if (StepStays(from, step, 2) && isFree(position.board[from + step]))
                tryMove(from + step);
        return found;
    }
    std::vector<int> steps;
    if (kind != 4)
        steps.insert(steps.end(), {7, 9, -7, -9});
    if (kind != 3)
        steps.insert(steps.end(), {8, 1, -8, -1});
    for (int step : steps)
        for (int at = from; StepStays(at, step, 1);) {
            at += step;
            if (isFree(position.board[at]))
                tryMove(at);
            if (position.board[at] != 0 || kind == 6)
                break;
        }
    if (kind == 6 && from == (white ? 4 : 60)) {
        const uint8_t rook = white ? 12 : 4;
        const auto attacked = [&](int square) {
            return white ? AttackedByBlack(&position, square) : AttackedByWhite(&position, square);
        };
        const uint8_t* b = position.board;
        if ((white ? position.castleWhiteShort : position.castleBlackShort) && !b[from + 1] && !b[from + 2] &&
            b[from + 3] == rook && !attacked(from) && !attacked(from + 1))
            tryMove(from + 2);
        if ((white ? position.castleWhiteLong : position.castleBlackLong) && !b[from - 1] && !b[from - 2] &&
            !b[from - 3] && b[from - 4] == rook && !attacked(from) && !attacked(from - 1))
            tryMove(from - 2);
    }
    return found;
}

bool PlainHasNoMove(const sPosition& position)
{
    for (int from = 0; from < 64; ++from)
        if (!PlainDestinations(position, from).empty())
            return false;
    return true;
}

int PlainAmbiguity(const sPosition& position, uint32_t move)
{
    const int from = move & 63;
    const int to = (move >> 8) & 63;
    int ambiguity = 0;
    for (int rival = 0; rival < 64; ++rival) {
        if (rival == from || position.board[rival] != position.board[from])
            continue;
        const std::vector<int> reach = PlainDestinations(position, rival);
        if (std::find(reach.begin(), reach.end(), to) != reach.end())
            ambiguity |= (rival & 7) != (from & 7) ? 1 : 2;
    }
    return ambiguity;
}

int PlainOutcome(const sPosition& position, uint32_t move)
{
    sPosition after = position;
    ApplyMoveSteps(&after, move);
    return (SideToMoveInCheck(&after) ? 1 : 0) | (PlainHasNoMove(after) ? 2 : 0);
}
