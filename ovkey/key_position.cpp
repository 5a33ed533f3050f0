#include "ovkey/key_position.h"

#include <cstring>

namespace ovkey {
namespace {

constexpr int kSide = 64;
constexpr int kCastling = 65;
constexpr int kEpFile = 66;

uint8_t SquareAt(const KeyPosition& position, int file, int rank)
{
    return position[static_cast<size_t>(8 * rank + file)];
}

// The en passant file stays only when the side to move has a pawn beside the
// pawn that has just made its double step.
uint8_t UsableEpFile(const KeyPosition& position, int32_t epFile)
{
    if (epFile < 1 || epFile > 8)
        return 0;
    const int file = epFile - 1;
    const bool whiteToMove = position[kSide] == 0;
    const int rank = whiteToMove ? 4 : 3;
    const uint8_t mover = whiteToMove ? DrvWhitePawn : DrvBlackPawn;
    const uint8_t stepped = whiteToMove ? DrvBlackPawn : DrvWhitePawn;
    if (SquareAt(position, file, rank) != stepped)
        return 0;
    const bool left = file > 0 && SquareAt(position, file - 1, rank) == mover;
    const bool right = file < 7 && SquareAt(position, file + 1, rank) == mover;
    return left || right ? static_cast<uint8_t>(epFile) : 0;
}

}  // namespace

KeyPosition KeyPositionOf(const BoardRecord& board)
{
    KeyPosition position{};
    for (int rank = 0; rank < 8; ++rank)
        for (int file = 0; file < 8; ++file)
            position[static_cast<size_t>(8 * rank + file)] = board.squares[BoardIndex(file, rank)];
    position[kSide] = board.sideToMove == 1 ? 1 : 0;
    position[kCastling] = board.castling & 0xF0;
    position[kEpFile] = UsableEpFile(position, board.epFile);
    return position;
}

void PutKeyPosition(const KeyPosition& position, int32_t plies, BoardRecord& board)
{
    for (int rank = 0; rank < 8; ++rank)
        for (int file = 0; file < 8; ++file)
            board.squares[BoardIndex(file, rank)] = SquareAt(position, file, rank);
    board.sideToMove = position[kSide] == 1 ? 1 : 0;
    board.castling = position[kCastling];
    board.epFile = position[kEpFile];
    board.ply = plies + 1;
}

int64_t KeyPositionHash(const KeyPosition& position)
{
    // Eight bytes at a time, each word mixed in by a multiply, and a final
    // mix so that the low bits spread as well.
    uint64_t hash = 0x9E3779B97F4A7C15ull;
    size_t at = 0;
    for (; at + 8 <= position.size(); at += 8) {
        uint64_t word;
        std::memcpy(&word, position.data() + at, sizeof word);
        hash = (hash ^ word) * 0xBF58476D1CE4E5B9ull;
        hash ^= hash >> 31;
    }
    for (; at < position.size(); ++at)
        hash = (hash ^ position[at]) * 0x94D049BB133111EBull;
    hash ^= hash >> 29;
    hash *= 0xFF51AFD7ED558CCDull;
    hash ^= hash >> 32;
    return static_cast<int64_t>(hash);
}

}  // namespace ovkey
