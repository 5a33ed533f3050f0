// The position record: the standard start position, the conversion from the
// game driver's board and move, and the steps that keep the castling and en
// passant fields honest.
#ifndef ORVAN_CHESS_POSITION_H
#define ORVAN_CHESS_POSITION_H

#include <cstdint>
#include <cstring>

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

// Sets the fields a move of `piece` from `from` to `to` changes besides the
// men: the en passant square and the castling rights.
inline void UpdateMoveFields(sPosition* position, uint8_t piece, int from, int to)
{
    position->epSquare = OV_NO_EP_SQUARE;
    if (piece == OV_WHITE_PAWN && to - from == 16)
        position->epSquare = static_cast<uint8_t>(from + 8);
    if (piece == OV_BLACK_PAWN && from - to == 16)
        position->epSquare = static_cast<uint8_t>(from - 8);

    if (piece == OV_WHITE_KING)
        position->castleWhiteLong = position->castleWhiteShort = 0;
    if (piece == OV_BLACK_KING)
        position->castleBlackLong = position->castleBlackShort = 0;
    // A right goes when anything leaves or arrives on its rook's square.
    // With the usual field values (0, or 1 for the corner rook) only a move
    // from or to a corner can take one.
    // The four fields are read as one word: all of them 0 or 1 when no
    // byte has a bit above its lowest.
    constexpr uint64_t Corners = 0x8100000000000081ull;
    uint32_t fields;
    std::memcpy(&fields, &position->castleWhiteLong, sizeof fields);
    if (fields == 0 ||
        ((fields & ~0x01010101u) == 0 && ((Corners >> from) & 1) == 0 && ((Corners >> to) & 1) == 0))
        return;
    for (int field = 0; field < CastlingFieldCount; ++field) {
        uint8_t& value = CastlingField(*position, field);
        if (value != 0) {
            const int rookSquare = CastlingRookSquare(field, value);
            if (from == rookSquare || to == rookSquare)
                value = 0;
        }
    }
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
