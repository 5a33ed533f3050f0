// Attack tests, make and take-back, and the legal destinations of
// a man.
#include "chess/move_generator.h"

#include "chess/attacks.h"
#include "chess/board_geometry.h"
#include "chess/board_view.h"
#include "chess/destination_walk.h"
#include "chess/packed_move.h"
#include "chess/piece_codes.h"
#include "chess/view_rules.h"

int AttackedByBlack(const sPosition* position, int square)
{
    return SquareAttacked<false>(position->board, square);
}

int AttackedByWhite(const sPosition* position, int square)
{
    return SquareAttacked<true>(position->board, square);
}

namespace {

// The rook of a castling: the king's code, its home square and destination,
// and the squares the rook comes from and goes to.
struct CastlingRook {
    uint8_t king, rook;
    int from, to, rookHome, rookTarget;
};
constexpr CastlingRook CastlingRooks[4] = {
    {OV_WHITE_KING, OV_WHITE_ROOK, 4, 6, 7, 5},
    {OV_WHITE_KING, OV_WHITE_ROOK, 4, 2, 0, 3},
    {OV_BLACK_KING, OV_BLACK_ROOK, 60, 62, 63, 61},
    {OV_BLACK_KING, OV_BLACK_ROOK, 60, 58, 56, 59},
};

const CastlingRook* CastlingRookOf(int piece, int from, int to)
{
    if ((piece & 7) != KingKind)
        return nullptr;
    for (const CastlingRook& castling : CastlingRooks)
        if (piece == castling.king && from == castling.from && to == castling.to)
            return &castling;
    return nullptr;
}

// The square of the man an en passant capture takes, -1 for any other move.
// En passant is told by geometry alone: a pawn that changes file onto an
// empty square.
int EnPassantVictim(int piece, int from, int to, int captured)
{
    if (captured != 0 || FileOf(from) == FileOf(to))
        return -1;
    if (piece == OV_WHITE_PAWN && to >= 8)
        return to - 8;
    if (piece == OV_BLACK_PAWN && to <= 55)
        return to + 8;
    return -1;
}

}  // namespace

int MakeBoardMove(sPosition* position, int from, int to)
{
    uint8_t* board = position->board;
    const uint8_t captured = board[to];
    const uint8_t piece = board[from];
    if (const CastlingRook* castling = CastlingRookOf(piece, from, to)) {
        board[castling->rookTarget] = castling->rook;
        board[castling->rookHome] = 0;
    }
    const int victim = EnPassantVictim(piece, from, to, captured);
    if (victim >= 0)
        board[victim] = 0;
    board[to] = piece;
    board[from] = 0;
    return captured;
}

void UndoBoardMove(sPosition* position, int from, int to, int piece, int captured)
{
    uint8_t* board = position->board;
    if (const CastlingRook* castling = CastlingRookOf(piece, from, to)) {
        board[castling->rookHome] = castling->rook;
        board[castling->rookTarget] = 0;
    }
    const int victim = EnPassantVictim(piece, from, to, captured);
    if (victim >= 0)
        board[victim] = piece == OV_WHITE_PAWN ? OV_BLACK_PAWN : OV_WHITE_PAWN;
    board[from] = static_cast<uint8_t>(piece);
    board[to] = static_cast<uint8_t>(captured);
}

int MoveKeepsKingSafe(sPosition* position, int from, int to)
{
    const uint8_t piece = position->board[from];
    const int captured = MakeBoardMove(position, from, to);
    const bool white = (position->board[to] & WhiteBit) != 0;
    const int king = FirstSquareHolding(position->board, white ? OV_WHITE_KING : OV_BLACK_KING);
    const bool attacked = white ? SquareAttacked<false>(position->board, king)
                                : SquareAttacked<true>(position->board, king);
    UndoBoardMove(position, from, to, piece, captured);
    return !attacked;
}

namespace {

// The walks proper, kept out of line so that the common call for a square
// without a man of the side to move stays cheap.
[[gnu::noinline]] int ListDestinations(sPosition* position, int from, int32_t* destinations)
{
    KingWatch watch = WatchSideToMove(position);
    DestinationListSink sink{destinations};
    VisitDestinations(watch, from, sink);
    return sink.count;
}

[[gnu::noinline]] bool HasDestination(sPosition* position, int from, int to)
{
    KingWatch watch = WatchSideToMove(position);
    OneDestinationSink sink{to};
    return VisitDestinations(watch, from, sink);
}

bool HoldsManOfSideToMove(const sPosition& position, int from)
{
    const uint8_t piece = position.board[from];
    return WhiteToMove(position) ? IsWhiteMan(piece) : IsBlackMan(piece);
}

}  // namespace

int GenerateDestinations(sPosition* position, int from, int32_t* destinations)
{
    if (position == nullptr || destinations == nullptr || from < 0 || from > 63 ||
        !HoldsManOfSideToMove(*position, from))
        return 0;
    return ListDestinations(position, from, destinations);
}

int MoveIsLegal(sPosition* position, uint32_t move)
{
    const int from = MoveFrom(move);
    if (position == nullptr || !HoldsManOfSideToMove(*position, from))
        return 0;
    BoardView view;
    if (ReadOrdinaryView(*position, view))
        return ViewMoveIsLegal(view, GuardOfSideToMove(view), position->board[from] & 7, from, MoveTo(move)) ? 1 : 0;
    return HasDestination(position, from, MoveTo(move)) ? 1 : 0;
}
