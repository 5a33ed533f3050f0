// The description byte of a move.
#include <bit>

#include "chess/board_view.h"
#include "chess/destination_walk.h"
#include "chess/move_notation.h"
#include "chess/packed_move.h"
#include "chess/piece_codes.h"
#include "chess/tracked_position.h"
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

namespace {

// Only men of the side to move have destinations.
bool SideToMoveMan(const sPosition& position, uint8_t piece)
{
    return WhiteToMove(position) ? IsWhiteMan(piece) : IsBlackMan(piece);
}

int AmbiguityBit(int rival, int from) { return FileOf(rival) != FileOf(from) ? 1 : 2; }

// FindAmbiguity on the square-set view of an ordinary record. Only the twins
// that could reach `to` on an empty board are tried, most often none.
int AmbiguityOnView(const BoardView& view, const KingGuard& guard, SquareSet twins, int kind, int from, int to)
{
    int ambiguity = 0;
    for (SquareSet rivals = twins & ReachableFrom(kind, to); rivals != 0; rivals &= rivals - 1) {
        const int rival = std::countr_zero(rivals);
        if (ViewMoveIsLegal(view, guard, kind, rival, to))
            ambiguity |= AmbiguityBit(rival, from);
    }
    return ambiguity;
}

// The description byte without the outcome bits; `findAmbiguity` is asked
// only for the moves of a piece.
template <typename AmbiguityFinder>
int MoveShape(const sPosition* position, uint32_t move, AmbiguityFinder findAmbiguity)
{
    const int from = MoveFrom(move);
    const int to = MoveTo(move);
    if (IsCastlingMove(position, move))
        return to > from ? OV_MOVE_SHORT_CASTLING : OV_MOVE_LONG_CASTLING;
    const int kind = position->board[from] & 7;
    const bool capture = position->board[to] != 0;
    int info;
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
        const int ambiguity = findAmbiguity();
        if (ambiguity & 1)
            info |= OV_MOVE_SHOW_FILE;
        if (ambiguity & 2)
            info |= OV_MOVE_SHOW_RANK;
        if (capture)
            info |= OV_MOVE_CAPTURE;
    }
    return info;
}

}  // namespace

int FindAmbiguity(sPosition* position, uint32_t move)
{
    const int from = MoveFrom(move);
    const int to = MoveTo(move);
    const uint8_t piece = position->board[from];
    // Most men have no twin on the board: no other square holds their code.
    const SquareSet twins = SquaresHolding(*position, piece) & ~SquareBit(from);
    if (!SideToMoveMan(*position, piece) || twins == 0)
        return 0;
    // Ordinary records are answered on the square-set view, any other by
    // the walk over the rival's destinations.
    BoardView view;
    if (ReadOrdinaryView(*position, view))
        return AmbiguityOnView(view, GuardOfSideToMove(view), twins, piece & 7, from, to);
    KingWatch watch = WatchSideToMove(position);
    int ambiguity = 0;
    for (SquareSet rivals = twins; rivals != 0; rivals &= rivals - 1) {
        const int rival = std::countr_zero(rivals);
        OneDestinationSink sink{to};
        if (VisitDestinations(watch, rival, sink))
            ambiguity |= AmbiguityBit(rival, from);
    }
    return ambiguity;
}

int32_t OvGetMoveInfo(sPosition* position, uint32_t move)
{
    if (position == nullptr)
        return 0;
    const int shape = MoveShape(position, move, [&] { return FindAmbiguity(position, move); });
    return shape | (MoveOutcome(position, move) << 4);
}

int32_t DescribeTrackedMove(TrackedPosition& tracked, uint32_t move, bool findStalemate)
{
    // A stalemate left out takes its outcome bits along.
    const auto outcomeBits = [findStalemate](int outcome) {
        return outcome == 2 && !findStalemate ? 0 : outcome << 4;
    };
    // The word 0 is tried as the step a1-a1 but played as nothing.
    if (!tracked.ordinary || (move & 0xFFFF) == 0) {
        const int32_t info = OvGetMoveInfo(&tracked.record, move);
        PlayTrackedMove(tracked, move);
        return (info & ~OV_MOVE_OUTCOME_MASK) | outcomeBits((info & OV_MOVE_OUTCOME_MASK) >> 4);
    }
    const sPosition& record = tracked.record;
    const int shape = MoveShape(&record, move, [&] {
        const int from = MoveFrom(move);
        const uint8_t piece = record.board[from];
        const SquareSet twins = tracked.view.Pieces(piece & 7, (piece & WhiteBit) != 0) & ~SquareBit(from);
        if (!SideToMoveMan(record, piece) || twins == 0)
            return 0;
        return AmbiguityOnView(tracked.view, tracked.guard, twins, piece & 7, from, MoveTo(move));
    });
    PlayTrackedMove(tracked, move);
    if (!tracked.ordinary)
        return shape | outcomeBits(CheckAndNoMove(&tracked.record));
    // Out of check only a stalemate needs the search for a legal reply.
    if (tracked.guard.checkers == 0 && !findStalemate)
        return shape;
    return shape | outcomeBits(CheckAndNoMoveOnView(tracked.view, tracked.guard));
}
