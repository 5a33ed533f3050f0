// Records shared with the game store and the key database: the driver's board
// record, its form of a move, and its piece codes.
#ifndef ORVAN_SIBLINGS_DRIVER_RECORDS_H
#define ORVAN_SIBLINGS_DRIVER_RECORDS_H

#include <cstddef>
#include <cstdint>

// The driver's piece codes.
enum DriverPiece : uint8_t {
    DrvEmpty = 0,
    DrvWhitePawn = 8, DrvWhiteKnight = 9, DrvWhiteBishop = 10,
    DrvWhiteRook = 11, DrvWhiteQueen = 12, DrvWhiteKing = 13,
    DrvBlackPawn = 16, DrvBlackKnight = 17, DrvBlackBishop = 18,
    DrvBlackRook = 19, DrvBlackQueen = 20, DrvBlackKing = 21,
};

// Castling flags of BoardRecord::castling.
enum : uint8_t {
    DrvCastleWhiteShort = 0x10, DrvCastleWhiteLong = 0x20,
    DrvCastleBlackShort = 0x40, DrvCastleBlackLong = 0x80,
};

// The driver's board, 152 bytes. The square on file f and rank r (0 to 7)
// lies at squares[11 + 10 * f + r]; the border and `reserved` are the driver's.
struct BoardRecord {
    uint8_t squares[100];
    int32_t sideToMove;  // 1 = black, anything else = white
    int32_t epFile;      // 1 to 8 for files a to h, 0 = none
    uint8_t castling;    // DrvCastle* flags
    uint8_t pad[7];
    int32_t ply;         // 1 for white's first move, 2 for black's first, ...
    uint8_t reserved[32];
};
static_assert(sizeof(BoardRecord) == 152);
static_assert(offsetof(BoardRecord, sideToMove) == 100);
static_assert(offsetof(BoardRecord, epFile) == 104);
static_assert(offsetof(BoardRecord, castling) == 108);
static_assert(offsetof(BoardRecord, ply) == 116);

constexpr int BoardIndex(int file, int rank) { return 11 + 10 * file + rank; }

// The driver's form of a move: files and ranks 1 to 8, then the promotion
// piece as a driver piece code (0 or a queen code when no underpromotion).
struct MoveXY {
    int32_t fromFile;
    int32_t fromRank;
    int32_t toFile;
    int32_t toRank;
    int32_t promotion;
};
static_assert(sizeof(MoveXY) == 20);

#endif
