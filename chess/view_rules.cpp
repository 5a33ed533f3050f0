// Legal moves on the square-set view of an ordinary record.
#include "chess/view_rules.h"

#include <bit>

#include "chess/piece_codes.h"

namespace {

constexpr SquareSet FileA = 0x0101010101010101ull;
constexpr SquareSet FileH = FileA << 7;
constexpr SquareSet AllSquares = ~SquareSet{0};
// The squares a pawn reaches with the first step of a double step.
constexpr SquareSet WhiteFirstStepRank = 0xFFull << 16;
constexpr SquareSet BlackFirstStepRank = 0xFFull << 40;

constexpr int Forward(bool white) { return white ? 8 : -8; }

const SquareSet& PawnAttackSet(bool white, int square)
{
    return white ? WhitePawnAttackSets[square] : BlackPawnAttackSets[square];
}

// The enemy men that move along a direction: bishops and queens on the
// diagonals, rooks and queens on the straight lines.
SquareSet LineMovers(const BoardView& view, int direction)
{
    const int kind = direction < FirstStraightDirection ? BishopKind : RookKind;
    return (view.kinds[kind] | view.kinds[QueenKind]) & view.Enemy();
}

// Whether the king stands unattacked once the board is occupied as
// `occupied`, with the enemy men on `removed` gone.
bool KingSafeWith(const BoardView& view, int king, SquareSet occupied, SquareSet removed)
{
    return (AttackersOf(view, king, !view.whiteToMove, occupied) & ~removed) == 0;
}

// The squares a man of the side to move may go to without leaving its king
// to a check: the line from the king through the man when a line mover
// beyond it pins it, every square otherwise.
SquareSet PinLine(const BoardView& view, int king, int from)
{
    const int direction = DirectionTo[king][from];
    if (direction < 0)
        return AllSquares;
    const SquareSet movers = LineMovers(view, direction);
    if ((RaySets[direction][king] & movers) == 0 || (SquaresBetween(king, from) & view.occupied) != 0)
        return AllSquares;
    const SquareSet beyond = RayAttacks(direction, from, view.occupied) & view.occupied;
    return (beyond & movers) != 0 ? RaySets[direction][king] : AllSquares;
}

// The squares that answer the check, for a man other than the king: the
// checking man and the squares between it and the king; none against two
// checking men; every square without a check.
SquareSet CheckAnswers(const KingGuard& guard)
{
    if (guard.checkers == 0)
        return AllSquares;
    if (!OneSquare(guard.checkers))
        return 0;
    const int checker = std::countr_zero(guard.checkers);
    return guard.checkers | SquaresBetween(guard.king, checker);
}

// Whether an ordinary move (no king, no en passant) of a man that may reach
// `to` keeps the king safe.
bool OrdinaryMoveSafe(const BoardView& view, const KingGuard& guard, int from, int to)
{
    return (CheckAnswers(guard) & PinLine(view, guard.king, from) & SquareBit(to)) != 0;
}

// En passant takes the pawn behind the target square: the king is tested on
// the board as the capture leaves it.
bool EnPassantSafe(const BoardView& view, int king, int from, int to)
{
    const SquareSet victim = SquareBit(view.whiteToMove ? to - 8 : to + 8);
    const SquareSet occupied = (view.occupied ^ SquareBit(from) ^ victim) | SquareBit(to);
    return KingSafeWith(view, king, occupied, victim);
}

bool KingStepSafe(const BoardView& view, int king, int to)
{
    return KingSafeWith(view, to, view.occupied ^ SquareBit(king), 0);
}

// Castling to `to`, two squares from the king's home square: the field
// allows it, the squares between king and rook are empty, the rook stands in
// its corner, the king's square and the one it crosses are not attacked, and
// the king is safe on its target with the rook beside it.
bool CastlingLegal(const BoardView& view, int from, int to)
{
    const bool white = view.whiteToMove;
    const int home = white ? 4 : 60;
    if (from != home || (to != home + 2 && to != home - 2))
        return false;
    const bool kingSide = to > home;
    const int rookHome = kingSide ? home + 3 : home - 4;
    const int crossed = kingSide ? home + 1 : home - 1;
    const SquareSet between = SquaresBetween(home, rookHome);
    if (!(kingSide ? view.shortCastling : view.longCastling) || (view.occupied & between) != 0 ||
        (view.Pieces(RookKind, white) & SquareBit(rookHome)) == 0)
        return false;
    if (!KingSafeWith(view, home, view.occupied, 0) || !KingSafeWith(view, crossed, view.occupied, 0))
        return false;
    const SquareSet occupied =
        (view.occupied ^ SquareBit(home) ^ SquareBit(rookHome)) | SquareBit(to) | SquareBit(crossed);
    return KingSafeWith(view, to, occupied, 0);
}

// The squares a man other than a pawn or a king attacks and may go to,
// castling and king safety aside.
SquareSet PieceTargets(const BoardView& view, int kind, int from)
{
    switch (kind) {
    case KnightKind: return KnightAttackSets[from];
    case BishopKind: return DiagonalAttacks(from, view.occupied);
    case RookKind: return StraightAttacks(from, view.occupied);
    default: return DiagonalAttacks(from, view.occupied) | StraightAttacks(from, view.occupied);
    }
}

// Whether a man other than a pawn or a king on `from` attacks `to`: a
// knight's step, or a line of its kind with nothing between.
bool PieceReaches(const BoardView& view, int kind, int from, int to)
{
    if (kind == KnightKind)
        return (KnightAttackSets[from] & SquareBit(to)) != 0;
    const int direction = DirectionTo[from][to];
    const bool alongKind = kind == QueenKind || (kind == BishopKind) == (direction < FirstStraightDirection);
    return direction >= 0 && alongKind && (SquaresBetween(from, to) & view.occupied) == 0;
}

// A pawn's steps and captures, en passant aside.
SquareSet PawnTargets(const BoardView& view, int from)
{
    const bool white = view.whiteToMove;
    const SquareSet empty = ~view.occupied;
    SquareSet steps = SquareBit(from + Forward(white)) & empty;
    steps |= (white ? (steps & WhiteFirstStepRank) << 8 : (steps & BlackFirstStepRank) >> 8) & empty;
    return steps | (PawnAttackSet(white, from) & view.Enemy());
}

// The steps and captures of all the given pawns at once, en passant aside.
SquareSet PawnTargetsOfAll(const BoardView& view, SquareSet pawns)
{
    const SquareSet empty = ~view.occupied;
    const SquareSet enemy = view.Enemy();
    if (view.whiteToMove) {
        const SquareSet steps = (pawns << 8) & empty;
        return steps | ((steps & WhiteFirstStepRank) << 8 & empty) |
               ((((pawns & ~FileA) << 7) | ((pawns & ~FileH) << 9)) & enemy);
    }
    const SquareSet steps = (pawns >> 8) & empty;
    return steps | ((steps & BlackFirstStepRank) >> 8 & empty) |
           ((((pawns & ~FileH) >> 7) | ((pawns & ~FileA) >> 9)) & enemy);
}

// The men of the side to move that a line mover pins against the king.
SquareSet PinnedMen(const BoardView& view, int king)
{
    SquareSet pinned = 0;
    const SquareSet enemy = view.Enemy();
    const SquareSet queens = view.kinds[QueenKind];
    if ((DiagonalLines[king] & (view.kinds[BishopKind] | queens) & enemy) == 0 &&
        (StraightLines[king] & (view.kinds[RookKind] | queens) & enemy) == 0)
        return 0;
    for (int direction = 0; direction < 8; ++direction) {
        const SquareSet movers = LineMovers(view, direction);
        if ((RaySets[direction][king] & movers) == 0)
            continue;
        const SquareSet first = RayAttacks(direction, king, view.occupied) & view.occupied;
        if ((first & view.Own()) == 0)
            continue;
        const SquareSet second = RayAttacks(direction, std::countr_zero(first), view.occupied) & view.occupied;
        if ((second & movers) != 0)
            pinned |= first;
    }
    return pinned;
}

bool AnyKingStepSafe(const BoardView& view, int king)
{
    for (SquareSet steps = KingAttackSets[king] & ~view.Own(); steps != 0; steps &= steps - 1)
        if (KingStepSafe(view, king, std::countr_zero(steps)))
            return true;
    return false;
}

// Whether a man other than the king has a legal step or capture, en passant
// aside.
bool AnyManMoves(const BoardView& view, const KingGuard& guard)
{
    const SquareSet own = view.Own();
    const SquareSet answers = CheckAnswers(guard) & ~own;
    if (answers == 0)
        return false;
    // Pawns and knights off the king's lines cannot be pinned: most
    // positions end here, before the search for pinned men.
    const SquareSet kingLines = DiagonalLines[guard.king] | StraightLines[guard.king];
    if ((PawnTargetsOfAll(view, view.kinds[PawnKind] & own & ~kingLines) & answers) != 0)
        return true;
    for (SquareSet knights = view.kinds[KnightKind] & own & ~kingLines; knights != 0; knights &= knights - 1)
        if ((KnightAttackSets[std::countr_zero(knights)] & answers) != 0)
            return true;
    const SquareSet pinned = PinnedMen(view, guard.king);
    const SquareSet freePawns = view.kinds[PawnKind] & own & ~pinned;
    if ((PawnTargetsOfAll(view, freePawns) & answers) != 0)
        return true;
    for (SquareSet men = own & ~view.kinds[PawnKind] & ~view.kinds[KingKind]; men != 0; men &= men - 1) {
        const int from = std::countr_zero(men);
        const int kind = (view.kinds[KnightKind] >> from) & 1   ? KnightKind
                         : (view.kinds[BishopKind] >> from) & 1 ? BishopKind
                         : (view.kinds[RookKind] >> from) & 1   ? RookKind
                                                                : QueenKind;
        const SquareSet line = (pinned >> from) & 1 ? PinLine(view, guard.king, from) : AllSquares;
        if ((PieceTargets(view, kind, from) & answers & line) != 0)
            return true;
    }
    for (SquareSet pawns = view.kinds[PawnKind] & own & pinned; pawns != 0; pawns &= pawns - 1) {
        const int from = std::countr_zero(pawns);
        if ((PawnTargets(view, from) & answers & PinLine(view, guard.king, from)) != 0)
            return true;
    }
    return false;
}

bool AnyEnPassantSafe(const BoardView& view, int king)
{
    if (view.epSquare >= OV_NO_EP_SQUARE)
        return false;
    // The own pawns that attack the en passant square.
    SquareSet takers = PawnAttackSet(!view.whiteToMove, view.epSquare) & view.Pieces(PawnKind, view.whiteToMove);
    for (; takers != 0; takers &= takers - 1)
        if (EnPassantSafe(view, king, std::countr_zero(takers), view.epSquare))
            return true;
    return false;
}

}  // namespace

SquareSet AttackersOf(const BoardView& view, int square, bool byWhite, SquareSet occupied)
{
    const SquareSet men = byWhite ? view.white : view.black;
    const SquareSet queens = view.kinds[QueenKind] & men;
    const SquareSet straightMovers = (view.kinds[RookKind] & men) | queens;
    const SquareSet diagonalMovers = (view.kinds[BishopKind] & men) | queens;
    // A pawn of one colour attacks the square from where a pawn of the other
    // colour on the square would attack.
    SquareSet attackers = (PawnAttackSet(!byWhite, square) & view.kinds[PawnKind]) |
                          (KnightAttackSets[square] & view.kinds[KnightKind]) |
                          (KingAttackSets[square] & view.kinds[KingKind]);
    attackers &= men;
    // A line mover on one of the square's lines attacks it when nothing
    // stands between; there are seldom more than two such movers.
    for (SquareSet movers = (DiagonalLines[square] & diagonalMovers) | (StraightLines[square] & straightMovers);
         movers != 0; movers &= movers - 1) {
        const int mover = std::countr_zero(movers);
        if ((SquaresBetween(square, mover) & occupied) == 0)
            attackers |= SquareBit(mover);
    }
    return attackers;
}

bool ViewMoveIsLegal(const BoardView& view, const KingGuard& guard, int kind, int from, int to)
{
    const SquareSet target = SquareBit(to);
    if ((view.Own() & target) != 0)
        return false;
    switch (kind) {
    case PawnKind:
        if ((PawnAttackSet(view.whiteToMove, from) & target) != 0 && to == view.epSquare)
            return EnPassantSafe(view, guard.king, from, to);
        return (PawnTargets(view, from) & target) != 0 && OrdinaryMoveSafe(view, guard, from, to);
    case KingKind:
        if ((KingAttackSets[from] & target) != 0)
            return KingStepSafe(view, from, to);
        return CastlingLegal(view, from, to);
    default:
        return PieceReaches(view, kind, from, to) && OrdinaryMoveSafe(view, guard, from, to);
    }
}

SquareSet PieceOriginsOnView(const BoardView& view, const KingGuard& guard, int kind, int to)
{
    const SquareSet target = SquareBit(to);
    SquareSet men = view.Pieces(kind, view.whiteToMove) & ReachableFrom(kind, to);
    if (men == 0 || (view.Own() & target) != 0 || (CheckAnswers(guard) & target) == 0)
        return 0;
    // Each man stands a knight's step or on a line of its kind from `to`:
    // a slider reaches it when nothing stands between.
    if (kind != KnightKind)
        for (SquareSet sliders = men; sliders != 0; sliders &= sliders - 1) {
            const int from = std::countr_zero(sliders);
            if ((SquaresBetween(from, to) & view.occupied) != 0)
                men &= ~SquareBit(from);
        }
    // Only a man on a line through its king can be pinned.
    const SquareSet kingLines = DiagonalLines[guard.king] | StraightLines[guard.king];
    for (SquareSet exposed = men & kingLines; exposed != 0; exposed &= exposed - 1) {
        const int from = std::countr_zero(exposed);
        if ((PinLine(view, guard.king, from) & target) == 0)
            men &= ~SquareBit(from);
    }
    return men;
}

bool ViewHasLegalMove(const BoardView& view, const KingGuard& guard)
{
    // Out of check a man other than the king nearly always has a move, and
    // it is cheaper to find than a safe king step; in check the king first.
    // Castling never needs a look: when it is legal, so is the king's step
    // onto the square it crosses.
    if (guard.checkers != 0 && AnyKingStepSafe(view, guard.king))
        return true;
    if (AnyManMoves(view, guard))
        return true;
    if (guard.checkers == 0 && AnyKingStepSafe(view, guard.king))
        return true;
    // En passant is tried on the board as it leaves it.
    return AnyEnPassantSafe(view, guard.king);
}

int CheckAndNoMoveOnView(const BoardView& view, const KingGuard& guard)
{
    return (guard.checkers != 0 ? 1 : 0) | (ViewHasLegalMove(view, guard) ? 0 : 2);
}
