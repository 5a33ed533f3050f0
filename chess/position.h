// The position record: the standard start position, the conversion from the
// game driver's board and move, and the steps that keep the castling and en
// passant fields honest.
#ifndef ORVAN_CHESS_POSITION_H
#define ORVAN_CHESS_POSITION_H

#include <cstdint>

#include "orvan.h"
#include "siblings/driver_records.h"

inline constexpr sPosition StartPosition = {
    {12, 10, 11, 13, 14, 11, 10, 12,
     9, 9, 9, 9, 9, 9, 9, 9,
     0, 0, 0, 0, 0, 0, 0, 0,
     0, 0, 0, 0, 0, 0, 0, 0,
     0, 0, 0, 0, 0, 0, 0, 0,
     0, 0, 0, 0, 0, 0, 0, 0,
     1, 1, 1, 1, 1, 1, 1, 1,
     4, 2, 3, 5, 6, 3, 2, 4},
    1, OV_NO_EP_SQUARE, 1, 1, 1, 1,
};

// The four castling fields in record order, and the corner of each field's
// rook: a1, h1, a8, h8.
inline constexpr int CastlingFieldCount = 4;
inline constexpr uint8_t sPosition::*CastlingFields[CastlingFieldCount] = {
    &sPosition::castleWhiteLong, &sPosition::castleWhiteShort,
    &sPosition::castleBlackLong, &sPosition::castleBlackShort};
inline constexpr int CastlingCorners[CastlingFieldCount] = {0, 7, 56, 63};

inline uint8_t& CastlingField(sPosition& position, int field) { return position.*CastlingFields[field]; }

// The square of the rook a non-zero castling field names: its corner for the
// value 1, else value - 1.
constexpr int CastlingRookSquare(int field, uint8_t value)
{
    return value == 1 ? CastlingCorners[field] : value - 1;
}

// Fills the whole of `position` from the driver's board and returns the
// result of SanitizeEnPassant with `strictEnPassant`.
int PositionFromBoard(sPosition* position, const BoardRecord* board, int strictEnPassant);

// The five numbers of a MoveXY as a PackedMove, in the low 16 bits.
uint32_t PackMove(int32_t fromFile, int32_t fromRank, int32_t toFile, int32_t toRank, int32_t promotionPiece);

// Clears each castling field whose king or rook is not on its home square.
void SanitizeCastling(sPosition* position);

// Clears an en passant square that no double step can have left (and, when
// `strict` is 1, one beside which no pawn stands to take, apart from the edge
// files). Returns 1 when the square is none or stands, 0 when it was cleared.
int SanitizeEnPassant(sPosition* position, int strict);

// 1 when all 70 bytes equal the standard start position, else 0.
int IsStartPosition(const sPosition* position);

#endif
