// The store's own chess rules on a 64-square board with the driver's piece
// codes: move targets in a fixed order (the basis of the packed move form),
// making moves, attacks and legality. Independent of liborvan's chess code.
#ifndef OVGAME_BOARD_RULES_H
#define OVGAME_BOARD_RULES_H

#include <array>
#include <cstdint>

#include "siblings/driver_records.h"

namespace ovg {

// Square = 8 * rank + file, a1 = 0, h8 = 63.
constexpr int SquareOf(int file, int rank) { return 8 * rank + file; }
constexpr int FileOf(int square) { return square & 7; }
constexpr int RankOf(int square) { return square >> 3; }

enum Color : uint8_t { White = 0, Black = 1 };
// Piece kinds: the driver code AND 7.
enum Kind : uint8_t { Pawn = 0, Knight = 1, Bishop = 2, Rook = 3, Queen = 4, King = 5, NoKind = 7 };

// The kind of each code: 8 to 13 white men, 16 to 21 black men, NoKind for
// any other, so that a code is told by one lookup.
inline constexpr std::array<Kind, 256> CodeKinds = [] {
    std::array<Kind, 256> kinds{};
    for (int code = 0; code < 256; ++code)
        kinds[code] = (code >= 8 && code <= 13) || (code >= 16 && code <= 21) ? Kind(code & 7) : NoKind;
    return kinds;
}();

constexpr bool IsPiece(uint8_t code) { return CodeKinds[code] != NoKind; }
constexpr Color ColorOf(uint8_t code) { return code >= 16 ? Black : White; }
constexpr Kind KindOf(uint8_t code) { return CodeKinds[code]; }
constexpr uint8_t PieceCode(Color color, Kind kind) { return uint8_t((color == White ? 8 : 16) + kind); }
constexpr uint8_t NoSquare = 64;

// Men counted per colour and kind, kings apart: index 5 * colour + kind.
constexpr int CountedKinds = 10;

// A position: squares with driver codes, side to move, castling flags
// (DrvCastle*), en passant file 1 to 8 (0 none), ply of the next move, and
// the occupancy per colour and per kind (both colours), king squares and men
// counts kept in step with the squares.
struct Position {
    uint8_t squares[64];
    uint8_t side;
    uint8_t castling;
    uint8_t epFile;
    uint8_t kingSquare[2];
    uint8_t counts[CountedKinds];
    int32_t ply;
    uint64_t occupied[2];
    uint64_t kinds[King + 1];
};

// The number of set bits.
constexpr int CountBits(uint64_t bits)
{
    bits = bits - ((bits >> 1) & 0x5555555555555555ull);
    bits = (bits & 0x3333333333333333ull) + ((bits >> 2) & 0x3333333333333333ull);
    bits = (bits + (bits >> 4)) & 0x0F0F0F0F0F0F0F0Full;
    return int((bits * 0x0101010101010101ull) >> 56);
}

// Rebuilds occupancy and king squares from `squares`; codes that are no piece
// become empty.
void Normalise(Position& pos);
// The standard start position: a new copy, and the one kept for reading.
Position StartPosition();
const Position& StandardStart();
Position PositionFromRecord(const BoardRecord& board);
void RecordFromPosition(const Position& pos, BoardRecord& board);
// Castling flags that kings and rooks on their home squares allow.
uint8_t CastlingAllowed(const Position& pos);

// At most this many targets for one piece (a queen reaches 27).
constexpr int MaxTargets = 32;
// Destination squares of the piece on `from`, pseudo-legal, in a fixed order:
// steps and rays per direction, for a king then the castling targets (short,
// long) when the right stands and the squares between are empty, for a pawn
// the pushes then the captures (en passant included). Generation may stop
// once `limit` targets are found. Result the count.
int TargetsOf(const Position& pos, int from, uint8_t* targets, int limit = MaxTargets);

// The target at `place` (from 0) in the order of TargetsOf; -1 when the
// piece has fewer targets.
int TargetAt(const Position& pos, int from, int place);

bool IsAttacked(const Position& pos, int square, Color by);
bool InCheck(const Position& pos, Color color);

// Plays a pseudo-legal move; `promotion` is the kind for a pawn that reaches
// the last rank (Queen when anything else is given).
void MakeMove(Position& pos, int from, int to, Kind promotion);

// For a legal move of the side to move (a target of TargetsOf, castling not
// out of or through check, and the mover's king not attacked afterwards) the
// place of `to` among the targets of the piece on `from`; -1 for any other.
int LegalTargetPlace(const Position& pos, int from, int to);
// Whether the move from `from` to `to` is a pawn reaching the last rank.
inline bool IsPromotion(const Position& pos, int from, int to)
{
    return KindOf(pos.squares[from]) == Pawn && (RankOf(to) == 7 || RankOf(to) == 0);
}
// Whether the move from `from` to `to` is a pawn's capture en passant: a
// change of file onto an empty square.
inline bool IsEnPassant(const Position& pos, int from, int to)
{
    return KindOf(pos.squares[from]) == Pawn && FileOf(from) != FileOf(to) && !IsPiece(pos.squares[to]);
}

}  // namespace ovg

#endif
