#include "ovkey/key_position.h"

namespace ovkey {
namespace {

constexpr int kSide = 64;
constexpr int kCastling = 65;
constexpr int kEpFile = 66;

uint8_t SquareAt(const KeyPosition& position, int file, int rank)
{
    return position[static_cast<size_t>(8 * rank + file)];
}

}  // namespace

uint8_t UsableEpFile(const BoardRecord& board)
{
    if (board.epFile < 1 || board.epFile > 8)
        return 0;
    const int file = board.epFile - 1;
    const bool whiteToMove = board.sideToMove != 1;
    const int rank = whiteToMove ? 4 : 3;
    const uint8_t mover = whiteToMove ? DrvWhitePawn : DrvBlackPawn;
    const uint8_t stepped = whiteToMove ? DrvBlackPawn : DrvWhitePawn;
    if (board.squares[BoardIndex(file, rank)] != stepped)
        return 0;
    const bool left = file > 0 && board.squares[BoardIndex(file - 1, rank)] == mover;
    const bool right = file < 7 && board.squares[BoardIndex(file + 1, rank)] == mover;
    return left || right ? static_cast<uint8_t>(board.epFile) : 0;
}

KeyPosition KeyPositionOf(const BoardRecord& board)
{
    KeyPosition position{};
    for (int rank = 0; rank < 8; ++rank)
        for (int file = 0; file < 8; ++file)
            position[static_cast<size_t>(8 * rank + file)] = board.squares[BoardIndex(file, rank)];
    position[kSide] = board.sideToMove == 1 ? 1 : 0;
    position[kCastling] = board.castling & 0xF0;
    position[kEpFile] = UsableEpFile(board);
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

}  // namespace ovkey
