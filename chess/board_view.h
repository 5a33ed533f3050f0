// A square-set view of a position record, for the fast answers of the move
// generator. It exists only for ordinary records: every board byte a piece
// code or empty, one king of each colour, no pawn on the first or the eighth
// rank, and an en passant square that is none (64 or above) or the empty
// square behind an enemy pawn on the side to move's fifth rank. On such a
// record the step-by-step rules and the square-set rules give the same
// answers; any other record goes the step-by-step way.
#ifndef ORVAN_CHESS_BOARD_VIEW_H
#define ORVAN_CHESS_BOARD_VIEW_H

#include <array>
#include <cstdint>

#include "chess/bitboards.h"
#include "chess/piece_codes.h"
#include "orvan.h"

struct BoardView {
    std::array<SquareSet, 8> kinds;  // by piece kind (code AND 7); index 0 holds the empty squares
    SquareSet white, black, occupied;
    bool whiteToMove;
    int epSquare;  // 64 when there is none
    // Whether the side to move's castling fields allow it to castle.
    bool shortCastling, longCastling;

    SquareSet Pieces(int kind, bool whiteMen) const { return kinds[kind] & (whiteMen ? white : black); }
    SquareSet Own() const { return whiteToMove ? white : black; }
    SquareSet Enemy() const { return whiteToMove ? black : white; }
};

// The squares of `position` that hold exactly `code`.
SquareSet SquaresHolding(const sPosition& position, uint8_t code);

// Fills `view` from `position` and returns true when the record is
// ordinary; `view` means nothing otherwise.
bool ReadOrdinaryView(const sPosition& position, BoardView& view);

// Whether the record's en passant square is none, or the empty square
// behind an enemy pawn on the side to move's fifth rank, with `view` read
// from the record.
bool EnPassantSquareOrdinary(const sPosition& position, const BoardView& view);

// Sets the parts of the view that follow from the kinds and the white men,
// and the fields of `position`.
inline void FinishView(const sPosition& position, BoardView& view)
{
    view.occupied = ~view.kinds[0];
    view.black = view.occupied & ~view.white;
    view.whiteToMove = WhiteToMove(position);
    view.epSquare = position.epSquare < OV_NO_EP_SQUARE ? position.epSquare : OV_NO_EP_SQUARE;
    view.shortCastling = (view.whiteToMove ? position.castleWhiteShort : position.castleBlackShort) != 0;
    view.longCastling = (view.whiteToMove ? position.castleWhiteLong : position.castleBlackLong) != 0;
}

// Brings the view of an ordinary record up to date after a move that only
// takes the man `piece` from `from` to `to` over the code `captured` (no
// castling, en passant or promotion); `after` is the record with the move
// applied, for the fields. Returns what ReadOrdinaryView returns for `after`.
// Inline: it runs for nearly every move of a walk through a game.
inline bool MoveOnOrdinaryView(const sPosition& after, BoardView& view, int from, int to, uint8_t piece,
                               uint8_t captured)
{
    // In this order the sets also come out right for a move from a square
    // onto itself, which leaves the square empty.
    const SquareSet fromBit = SquareBit(from);
    const SquareSet toBit = SquareBit(to);
    view.kinds[captured & 7] &= ~toBit;
    view.kinds[piece & 7] |= toBit;
    view.kinds[piece & 7] &= ~fromBit;
    view.kinds[0] |= fromBit;
    view.white &= ~toBit;
    if (piece & WhiteBit)
        view.white |= toBit;
    view.white &= ~fromBit;
    FinishView(after, view);
    // An ordinary record stays ordinary unless the move takes a king (also
    // the king "moving" onto its own square), puts a pawn on an edge rank, or
    // opens an en passant square that is not one.
    return (captured & 7) != KingKind && ((piece & 7) != PawnKind || (toBit & EdgeRanks) == 0) &&
           (view.epSquare == OV_NO_EP_SQUARE || EnPassantSquareOrdinary(after, view));
}

#endif
