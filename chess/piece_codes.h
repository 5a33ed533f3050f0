// Piece codes of sPosition, the conversions to and from the game driver's
// codes, and the pieces a pawn promotes to.
#ifndef ORVAN_CHESS_PIECE_CODES_H
#define ORVAN_CHESS_PIECE_CODES_H

#include <array>
#include <cstdint>

#include "orvan.h"
#include "siblings/driver_records.h"

// The white bit of a piece code; the low three bits give the kind.
inline constexpr uint8_t WhiteBit = 8;
enum PieceKind : uint8_t { PawnKind = 1, KnightKind, BishopKind, RookKind, QueenKind, KingKind };

constexpr bool IsWhiteMan(uint8_t code) { return code >= OV_WHITE_PAWN && code <= OV_WHITE_KING; }
constexpr bool IsBlackMan(uint8_t code) { return code >= OV_BLACK_PAWN && code <= OV_BLACK_KING; }

// The lowest bit of sideToMove tells the side, so that the flip by
// exclusive or always alternates, whatever the byte holds.
constexpr bool WhiteToMove(const sPosition& position) { return (position.sideToMove & 1) != 0; }

// Driver code (index) to sPosition code. Driver codes above 21 are no pieces.
inline constexpr std::array<uint8_t, 22> PositionPieceOfDriverPiece = {
    0, 0, 0, 0, 0, 0, 0, 0,
    OV_WHITE_PAWN, OV_WHITE_KNIGHT, OV_WHITE_BISHOP, OV_WHITE_ROOK, OV_WHITE_QUEEN, OV_WHITE_KING,
    0, 0,
    OV_BLACK_PAWN, OV_BLACK_KNIGHT, OV_BLACK_BISHOP, OV_BLACK_ROOK, OV_BLACK_QUEEN, OV_BLACK_KING,
};

// sPosition code AND 15 (index) to driver code.
inline constexpr std::array<uint8_t, 16> DriverPieceOfPositionPiece = {
    DrvEmpty,
    DrvBlackPawn, DrvBlackKnight, DrvBlackBishop, DrvBlackRook, DrvBlackQueen, DrvBlackKing,
    DrvEmpty, DrvEmpty,
    DrvWhitePawn, DrvWhiteKnight, DrvWhiteBishop, DrvWhiteRook, DrvWhiteQueen, DrvWhiteKing,
    DrvEmpty,
};

constexpr uint8_t PositionPieceFromDriver(uint8_t driverCode)
{
    return driverCode < PositionPieceOfDriverPiece.size() ? PositionPieceOfDriverPiece[driverCode] : 0;
}

constexpr uint8_t DriverPieceFromPosition(uint8_t code) { return DriverPieceOfPositionPiece[code & 15]; }

// The piece a pawn becomes, indexed by the promotion bits of a PackedMove
// (0 queen, 1 rook, 2 bishop, 3 knight).
inline constexpr std::array<uint8_t, 4> BlackPromotionPieces = {OV_BLACK_QUEEN, OV_BLACK_ROOK,
                                                                OV_BLACK_BISHOP, OV_BLACK_KNIGHT};
inline constexpr std::array<uint8_t, 4> WhitePromotionPieces = {OV_WHITE_QUEEN, OV_WHITE_ROOK,
                                                                OV_WHITE_BISHOP, OV_WHITE_KNIGHT};

#endif
