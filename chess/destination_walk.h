// The walk over the legal destinations of one man, shared by the destination
// list, the single-move legality test and the search for any legal move. The
// walk offers each free target to a sink, which says whether it wants the
// target tested and whether to stop once a tested target is accepted; targets
// nobody wants cost no king test.
#ifndef ORVAN_CHESS_DESTINATION_WALK_H
#define ORVAN_CHESS_DESTINATION_WALK_H

#include <cstdint>
#include <cstring>

#include "chess/attacks.h"
#include "chess/board_geometry.h"
#include "chess/move_generator.h"
#include "chess/piece_codes.h"
#include "orvan.h"

// The walk is the generator's inner loop: its small helpers go inline.
#define ORVAN_ALWAYS_INLINE __attribute__((always_inline))

// What the king tests of one position share: the mover's first king (63 when
// none) and whether it stands attacked, looked up on first need.
struct KingWatch {
    sPosition* position;
    bool white;
    int kingSquare = -1;
    bool kingAttacked = false;
};

inline KingWatch WatchSideToMove(sPosition* position) { return KingWatch{position, WhiteToMove(*position)}; }

inline bool AttackedByOpponent(const KingWatch& watch, int square)
{
    return watch.white ? SquareAttacked<false>(watch.position->board, square)
                       : SquareAttacked<true>(watch.position->board, square);
}

inline void LookAtKing(KingWatch& watch)
{
    if (watch.kingSquare >= 0)
        return;
    watch.kingSquare = FirstSquareHolding(watch.position->board, watch.white ? OV_WHITE_KING : OV_BLACK_KING);
    watch.kingAttacked = AttackedByOpponent(watch, watch.kingSquare);
}

// The king test for the ordinary moves of one man other than the king (no
// castling, no en passant). Such a move leaves the first king where it is.
// While that king is not attacked, the move can uncover an attack on it only
// along the line from the king through the man: a man off the king's lines
// may go anywhere, and a man pinned on such a line only along it, up to and
// including its pinner. With the king attacked, each move is tried on the
// board.
struct OrdinaryMoveCheck {
    KingWatch& watch;
    int from;
    bool prepared = false;
    bool tryEachMove = false;
    uint64_t allowed = 0;  // the squares the man may go to, when not tried

    ORVAN_ALWAYS_INLINE bool Safe(int to)
    {
        if (!prepared)
            Prepare();
        if (!tryEachMove)
            return ((allowed >> to) & 1) != 0;
        uint8_t* board = watch.position->board;
        const uint8_t piece = board[from];
        const uint8_t captured = board[to];
        board[to] = piece;
        board[from] = 0;
        const bool attacked = AttackedByOpponent(watch, watch.kingSquare);
        board[from] = piece;
        board[to] = captured;
        return !attacked;
    }

    void Prepare()
    {
        prepared = true;
        LookAtKing(watch);
        const int king = watch.kingSquare;
        if (watch.kingAttacked || from == king) {
            tryEachMove = true;
            return;
        }
        allowed = ~uint64_t{0};
        const int direction = DirectionTo[king][from];
        if (direction < 0)
            return;
        const uint8_t* board = watch.position->board;
        const Ray& ray = Rays[king][direction];
        const uint8_t lineMover = direction < FirstStraightDirection ? (watch.white ? OV_BLACK_BISHOP : OV_WHITE_BISHOP)
                                                                     : (watch.white ? OV_BLACK_ROOK : OV_WHITE_ROOK);
        const uint8_t queen = watch.white ? OV_BLACK_QUEEN : OV_WHITE_QUEEN;
        uint64_t line = 0;
        bool passedMan = false;
        for (int i = 0; i < ray.length; ++i) {
            const int square = ray.squares[i];
            line |= uint64_t{1} << square;
            if (square == from) {
                passedMan = true;
                continue;
            }
            const uint8_t code = board[square];
            if (code == 0)
                continue;
            // The first man beyond ours pins it if it attacks along the line;
            // a man between the king and ours shields the king either way.
            if (passedMan && (code == lineMover || code == queen))
                allowed = line;
            return;
        }
    }
};

// En passant takes the man behind the target square off the board; it is
// remembered and put back whatever it was, so that a record whose en passant
// square has no pawn behind it comes back unchanged.
inline bool EnPassantKeepsKingSafe(KingWatch& watch, int from, int to)
{
    uint8_t* board = watch.position->board;
    const int victim = watch.white ? to - 8 : to + 8;
    const uint8_t victimCode = board[victim];
    const bool safe = MoveKeepsKingSafe(watch.position, from, to) != 0;
    board[victim] = victimCode;
    return safe;
}

// Offers every legal destination of the man on `from` (0 to 63) to `sink` in
// generation order. Returns true when the sink stopped the walk.
template <class Sink>
bool VisitDestinations(KingWatch& watch, int from, Sink& sink)
{
    uint8_t* board = watch.position->board;
    const uint8_t piece = board[from];
    const bool white = watch.white;
    if (white ? !IsWhiteMan(piece) : !IsBlackMan(piece))
        return false;
    const auto isEnemy = [white](uint8_t code) { return white ? IsBlackMan(code) : IsWhiteMan(code); };
    const auto isFree = [&](uint8_t code) { return code == 0 || isEnemy(code); };
    OrdinaryMoveCheck ordinaryCheck{watch, from};
    const auto offerOrdinary = [&](int to) ORVAN_ALWAYS_INLINE { return sink.Wants(to) && ordinaryCheck.Safe(to) && sink.Take(to); };
    const auto offerKingMove = [&](int to) {
        return sink.Wants(to) && MoveKeepsKingSafe(watch.position, from, to) && sink.Take(to);
    };

    switch (piece & 7) {
    case PawnKind: {
        // A pawn on its far rank has no squares ahead of it on the board.
        if (white ? from >= 56 : from < 8)
            return false;
        const int file = FileOf(from);
        const int forward = white ? 8 : -8;
        // Captures towards the lower file first for white, the higher for black.
        const int captureSteps[2] = {white ? 7 : -7, white ? 9 : -9};
        const bool captureAllowed[2] = {white ? file != 0 : file != 7, white ? file != 7 : file != 0};
        const auto offerCaptures = [&](int side) ORVAN_ALWAYS_INLINE {
            if (!captureAllowed[side])
                return false;
            const int to = from + captureSteps[side];
            if (isEnemy(board[to]) && offerOrdinary(to))
                return true;
            return to == watch.position->epSquare && isFree(board[to]) && sink.Wants(to) &&
                   EnPassantKeepsKingSafe(watch, from, to) && sink.Take(to);
        };
        if (offerCaptures(0))
            return true;
        const int step = from + forward;
        if (board[step] == 0) {
            if (offerOrdinary(step))
                return true;
            const int doubleStep = step + forward;
            if ((white ? from < 16 : from >= 48) && board[doubleStep] == 0 && offerOrdinary(doubleStep))
                return true;
        }
        return offerCaptures(1);
    }
    case KnightKind: {
        const TargetList& targets = KnightTargets[from];
        for (int i = 0; i < targets.count; ++i)
            if (isFree(board[targets.squares[i]]) && offerOrdinary(targets.squares[i]))
                return true;
        return false;
    }
    case BishopKind:
    case RookKind:
    case QueenKind: {
        // Bishops walk the diagonal rays, rooks the straight ones, queens both.
        const int kind = piece & 7;
        const int firstDirection = kind == RookKind ? FirstStraightDirection : 0;
        const int endDirection = kind == BishopKind ? FirstStraightDirection : 8;
        for (int direction = firstDirection; direction < endDirection; ++direction) {
            const Ray& ray = Rays[from][direction];
            for (int i = 0; i < ray.length; ++i) {
                const int to = ray.squares[i];
                const uint8_t code = board[to];
                if (code != 0) {
                    if (isEnemy(code) && offerOrdinary(to))
                        return true;
                    break;
                }
                if (offerOrdinary(to))
                    return true;
            }
        }
        return false;
    }
    default: {  // KingKind
        // When no other king of its colour stands on the board, the moving
        // king is the one tested after a step: only its own square empties,
        // and what stood on the target plays no part in attacks on it.
        const bool onlyKing = std::memchr(board, piece, from) == nullptr &&
                              std::memchr(board + from + 1, piece, 63 - from) == nullptr;
        const auto offerKingStep = [&](int to) ORVAN_ALWAYS_INLINE {
            if (!onlyKing)
                return offerKingMove(to);
            if (!sink.Wants(to))
                return false;
            board[from] = 0;
            const bool attacked = AttackedByOpponent(watch, to);
            board[from] = piece;
            return !attacked && sink.Take(to);
        };
        const TargetList& targets = KingTargets[from];
        for (int i = 0; i < targets.count; ++i)
            if (isFree(board[targets.squares[i]]) && offerKingStep(targets.squares[i]))
                return true;
        // Castling, short side first: the king on its square, the squares
        // between empty, the rook in its corner, the king's square and the
        // one it crosses not attacked. Any non-zero field allows it.
        const sPosition& p = *watch.position;
        const int home = white ? 4 : 60;
        if (from != home)
            return false;
        const uint8_t rook = white ? OV_WHITE_ROOK : OV_BLACK_ROOK;
        const uint8_t shortField = white ? p.castleWhiteShort : p.castleBlackShort;
        const uint8_t longField = white ? p.castleWhiteLong : p.castleBlackLong;
        if (shortField != 0 && board[home + 1] == 0 && board[home + 2] == 0 && board[home + 3] == rook &&
            !AttackedByOpponent(watch, home) && !AttackedByOpponent(watch, home + 1) &&
            offerKingMove(home + 2))
            return true;
        return longField != 0 && board[home - 1] == 0 && board[home - 2] == 0 && board[home - 3] == 0 &&
               board[home - 4] == rook && !AttackedByOpponent(watch, home) &&
               !AttackedByOpponent(watch, home - 1) && offerKingMove(home - 2);
    }
    }
}

// Sinks.
struct DestinationListSink {
    int32_t* destinations;
    int count = 0;
    bool Wants(int) const { return true; }
    bool Take(int to)
    {
        destinations[count++] = to;
        return false;
    }
};

struct OneDestinationSink {
    int target;
    bool Wants(int to) const { return to == target; }
    bool Take(int) { return true; }
};

struct AnyDestinationSink {
    bool Wants(int) const { return true; }
    bool Take(int) { return true; }
};

// Whether any man of the side to move has a legal destination.
inline bool SideToMoveHasLegalMove(KingWatch& watch)
{
    AnyDestinationSink sink;
    const uint8_t* board = watch.position->board;
    for (int square = 0; square < 64; ++square)
        if ((watch.white ? IsWhiteMan(board[square]) : IsBlackMan(board[square])) &&
            VisitDestinations(watch, square, sink))
            return true;
    return false;
}

#endif
