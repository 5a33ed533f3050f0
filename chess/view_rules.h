// Attacks and legal moves on the square-set view of an ordinary record, with
// the answers the step-by-step generator gives: a move is legal when the
// mover's king stands unattacked after it. Pins and checks are read from the
// lines through the king instead of trying each move on the board.
#ifndef ORVAN_CHESS_VIEW_RULES_H
#define ORVAN_CHESS_VIEW_RULES_H

#include <bit>

#include "chess/board_view.h"
#include "chess/piece_codes.h"

// The squares from which a man of kind `kind` (knight to queen) can reach
// `to` on an empty board: a knight's step away, or on a line of its kind
// through `to`. Every square for any other kind.
constexpr SquareSet ReachableFrom(int kind, int to)
{
    switch (kind) {
    case KnightKind: return KnightAttackSets[to];
    case BishopKind: return DiagonalLines[to];
    case RookKind: return StraightLines[to];
    case QueenKind: return DiagonalLines[to] | StraightLines[to];
    default: return ~SquareSet{0};
    }
}

// The men of one colour that attack `square` when the board is occupied as
// `occupied`.
SquareSet AttackersOf(const BoardView& view, int square, bool byWhite, SquareSet occupied);

// The king of the side to move and the enemy men that give it check.
struct KingGuard {
    int king;
    SquareSet checkers;
};
inline KingGuard GuardOfSideToMove(const BoardView& view)
{
    const int king = std::countr_zero(view.Pieces(KingKind, view.whiteToMove));
    return KingGuard{king, AttackersOf(view, king, !view.whiteToMove, view.occupied)};
}

// Whether `to` is a legal destination of the man of kind `kind` (code AND 7)
// on `from`, a man of the side to move.
bool ViewMoveIsLegal(const BoardView& view, const KingGuard& guard, int kind, int from, int to);

// The squares of the men of kind `kind` (knight to queen) of the side to
// move for which `to` is a legal destination.
SquareSet PieceOriginsOnView(const BoardView& view, const KingGuard& guard, int kind, int to);

// Whether any man of the side to move has a legal destination.
bool ViewHasLegalMove(const BoardView& view, const KingGuard& guard);

// Whether the side to move is in check (bit 1) and whether it has no legal
// move (bit 2).
int CheckAndNoMoveOnView(const BoardView& view, const KingGuard& guard);

#endif
