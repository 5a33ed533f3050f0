// The description byte of a move.
#include <bit>

#include "chess/board_view.h"
#include "chess/destination_walk.h"
#include "chess/move_notation.h"
#include "chess/packed_move.h"
#include "chess/piece_codes.h"
#include "chess/view_rules.h"

int IsCastlingMove(const sPosition* position, uint32_t move)
{
    const uint32_t word = move & 0xFF3F;
    const uint8_t piece = position->board[MoveFrom(move)];
    if (WhiteToMove(*position))
        return piece == OV_WHITE_KING && (word == 0x0604 || word == 0x0204);
    return piece == OV_BLACK_KING && (word == 0x3E3C || word == 0x3A3C);
}

int IsEnPassantCapture(const sPosition* position, uint32_t move)
{
    const int from = MoveFrom(move);
    const int to = MoveTo(move);
    const uint8_t pawn = WhiteToMove(*position) ? OV_WHITE_PAWN : OV_BLACK_PAWN;
    return position->board[from] == pawn && FileOf(from) != FileOf(to) && position->board[to] == 0;
}

int IsPromotion(const sPosition* position, uint32_t move)
{
    const int from = MoveFrom(move);
    const uint8_t piece = position->board[from];
    return (piece == OV_WHITE_PAWN && from >= 48) || (piece == OV_BLACK_PAWN && from < 16);
}

int FindAmbiguity(sPosition* position, uint32_t move)
{
    const int from = MoveFrom(move);
    const int to = MoveTo(move);
    const uint8_t piece = position->board[from];
    // Only men of the side to move have destinations, and most men have no
    // twin on the board.
    const SquareSet twins = SquaresHolding(*position, piece) & ~SquareBit(from);
    if (!(WhiteToMove(*position) ? IsWhiteMan(piece) : IsBlackMan(piece)) || twins == 0)
        return 0;
    // Ordinary records are answered on the square-set view, any other by
    // the walk over the rival's destinations.
    BoardView view;
    const bool ordinary = ReadOrdinaryView(*position, view);
    const KingGuard guard = ordinary ? GuardOfSideToMove(view) : KingGuard{};
    KingWatch watch = WatchSideToMove(position);
    int ambiguity = 0;
    for (SquareSet rivals = twins; rivals != 0; rivals &= rivals - 1) {
        const int rival = std::countr_zero(rivals);
        OneDestinationSink sink{to};
        const bool reaches = ordinary ? ViewMoveIsLegal(view, guard, piece & 7, rival, to)
                                      : VisitDestinations(watch, rival, sink);
        if (reaches)
            ambiguity |= FileOf(rival) != FileOf(from) ? 1 : 2;
    }
    return ambiguity;
}

int32_t OvGetMoveInfo(sPosition* position, uint32_t move)
{
    if (position == nullptr)
        return 0;
    const int from = MoveFrom(move);
    const int to = MoveTo(move);
    int info;
    if (IsCastlingMove(position, move)) {
        info = to > from ? OV_MOVE_SHORT_CASTLING : OV_MOVE_LONG_CASTLING;
    } else {
        const int kind = position->board[from] & 7;
        const bool capture = position->board[to] != 0;
        if (kind == PawnKind) {
            // A capturing pawn always shows its file.
            info = IsEnPassantCapture(position, move) ? OV_MOVE_EN_PASSANT | OV_MOVE_CAPTURE | OV_MOVE_SHOW_FILE
                   : IsPromotion(position, move)     ? OV_MOVE_PROMOTION
                                                      : OV_MOVE_PAWN;
            if (capture)
                info |= OV_MOVE_CAPTURE | OV_MOVE_SHOW_FILE;
        } else {
            // The piece kinds 2 to 6 give the move kinds 0 to 4; a byte that
            // is no piece gives a kind without meaning.
            info = (kind - KnightKind) & OV_MOVE_KIND_MASK;
            const int ambiguity = FindAmbiguity(position, move);
            if (ambiguity & 1)
                info |= OV_MOVE_SHOW_FILE;
            if (ambiguity & 2)
                info |= OV_MOVE_SHOW_RANK;
            if (capture)
                info |= OV_MOVE_CAPTURE;
        }
    }
    return info | (MoveOutcome(position, move) << 4);
}
