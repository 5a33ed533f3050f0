// Whether a square is attacked by the men of one colour, on a board of 64
// piece codes. Only the exact codes of the attacking colour attack; any other
// non-zero byte blocks a line like a man.
#ifndef ORVAN_CHESS_ATTACKS_H
#define ORVAN_CHESS_ATTACKS_H

#include <cstdint>
#include <cstring>

#include "chess/board_geometry.h"
#include "orvan.h"

// The codes of one colour's men.
struct ColourCodes {
    uint8_t pawn, knight, bishop, rook, queen, king;
};
inline constexpr ColourCodes BlackCodes = {OV_BLACK_PAWN, OV_BLACK_KNIGHT, OV_BLACK_BISHOP,
                                           OV_BLACK_ROOK, OV_BLACK_QUEEN, OV_BLACK_KING};
inline constexpr ColourCodes WhiteCodes = {OV_WHITE_PAWN, OV_WHITE_KNIGHT, OV_WHITE_BISHOP,
                                           OV_WHITE_ROOK, OV_WHITE_QUEEN, OV_WHITE_KING};

template <bool ByWhite>
inline bool SquareAttacked(const uint8_t* board, int square)
{
    constexpr ColourCodes by = ByWhite ? WhiteCodes : BlackCodes;
    const int file = FileOf(square);
    // Pawns: black ones attack downwards from +7 and +9, white ones upwards
    // from -9 and -7; none stands beyond the edge files or the far rank.
    if constexpr (ByWhite) {
        if (RankOf(square) != 0) {
            if (file != 0 && board[square - 9] == by.pawn)
                return true;
            if (file != 7 && board[square - 7] == by.pawn)
                return true;
        }
    } else {
        if (RankOf(square) != 7) {
            if (file != 0 && board[square + 7] == by.pawn)
                return true;
            if (file != 7 && board[square + 9] == by.pawn)
                return true;
        }
    }
    const TargetList& knights = KnightTargets[square];
    for (int i = 0; i < knights.count; ++i)
        if (board[knights.squares[i]] == by.knight)
            return true;
    const TargetList& kings = KingTargets[square];
    for (int i = 0; i < kings.count; ++i)
        if (board[kings.squares[i]] == by.king)
            return true;
    const auto& rays = Rays[square];
    for (int direction = 0; direction < 8; ++direction) {
        const uint8_t lineMover = direction < FirstStraightDirection ? by.bishop : by.rook;
        const Ray& ray = rays[direction];
        for (int i = 0; i < ray.length; ++i) {
            const uint8_t code = board[ray.squares[i]];
            if (code != 0) {
                if (code == lineMover || code == by.queen)
                    return true;
                break;
            }
        }
    }
    return false;
}

// The first square holding `code`, searching from square 0 upwards; -1 when
// there is none.
inline int FindFirstSquare(const uint8_t* board, uint8_t code)
{
    const void* found = std::memchr(board, code, 64);
    return found ? static_cast<int>(static_cast<const uint8_t*>(found) - board) : -1;
}

// The same, but 63 when there is none, where a search through all squares
// ends: the square the king tests look at when a side has no king.
inline int FirstSquareHolding(const uint8_t* board, uint8_t code)
{
    const int square = FindFirstSquare(board, code);
    return square < 0 ? 63 : square;
}

#endif
