// Conversions from the driver's forms, and the sanitising of castling and en
// passant fields.
#include "chess/position.h"

#include <cstring>

#include "chess/board_geometry.h"
#include "chess/piece_codes.h"

int PositionFromBoard(sPosition* position, const BoardRecord* board, int strictEnPassant)
{
    *position = StartPosition;
    for (int rank = 0; rank < 8; ++rank)
        for (int file = 0; file < 8; ++file)
            position->board[8 * rank + file] = PositionPieceFromDriver(board->squares[BoardIndex(file, rank)]);
    if ((board->castling & DrvCastleWhiteShort) == 0)
        position->castleWhiteShort = 0;
    if ((board->castling & DrvCastleWhiteLong) == 0)
        position->castleWhiteLong = 0;
    if ((board->castling & DrvCastleBlackShort) == 0)
        position->castleBlackShort = 0;
    if ((board->castling & DrvCastleBlackLong) == 0)
        position->castleBlackLong = 0;
    if (board->sideToMove == 1)
        position->sideToMove = 0;
    // The en passant file lies on the third rank with black to move, on the
    // sixth with white to move. A file that gives no square of the board
    // leaves a value that the sanitising step clears and reports.
    if (board->epFile != 0) {
        const int64_t square = int64_t{board->epFile} + (position->sideToMove == 0 ? 15 : 39);
        position->epSquare = square >= 0 && square < 64 ? static_cast<uint8_t>(square) : OV_NO_EP_SQUARE + 1;
    }
    SanitizeCastling(position);
    return SanitizeEnPassant(position, strictEnPassant);
}

uint32_t PackMove(int32_t fromFile, int32_t fromRank, int32_t toFile, int32_t toRank, int32_t promotionPiece)
{
    uint32_t move = static_cast<uint32_t>((fromFile - 1) + 8 * (fromRank - 1)) +
                    256u * static_cast<uint32_t>((toFile - 1) + 8 * (toRank - 1));
    switch (promotionPiece) {
    case DrvWhiteKnight:
    case DrvBlackKnight:
        move |= 0xC000;
        break;
    case DrvWhiteBishop:
    case DrvBlackBishop:
        move |= 0x8000;
        break;
    case DrvWhiteRook:
    case DrvBlackRook:
        move |= 0x4000;
        break;
    default:
        break;
    }
    return move & 0xFFFF;
}

void SanitizeCastling(sPosition* position)
{
    const uint8_t* board = position->board;
    if (board[4] != OV_WHITE_KING)
        position->castleWhiteShort = position->castleWhiteLong = 0;
    if (board[7] != OV_WHITE_ROOK)
        position->castleWhiteShort = 0;
    if (board[0] != OV_WHITE_ROOK)
        position->castleWhiteLong = 0;
    if (board[60] != OV_BLACK_KING)
        position->castleBlackShort = position->castleBlackLong = 0;
    if (board[63] != OV_BLACK_ROOK)
        position->castleBlackShort = 0;
    if (board[56] != OV_BLACK_ROOK)
        position->castleBlackLong = 0;
}

int SanitizeEnPassant(sPosition* position, int strict)
{
    const int square = position->epSquare;
    if (square == OV_NO_EP_SQUARE)
        return 1;
    const bool white = WhiteToMove(*position);
    const int pawnSquare = white ? square - 8 : square + 8;
    const bool stands = [&] {
        if (square > OV_NO_EP_SQUARE || position->board[square] != 0)
            return false;
        if ((square & 56) != 16 && (square & 56) != 40)
            return false;
        if (position->board[pawnSquare] != (white ? OV_BLACK_PAWN : OV_WHITE_PAWN))
            return false;
        if (strict == 0 || FileOf(pawnSquare) == 0 || FileOf(pawnSquare) == 7)
            return true;
        const uint8_t taker = white ? OV_WHITE_PAWN : OV_BLACK_PAWN;
        return position->board[pawnSquare - 1] == taker || position->board[pawnSquare + 1] == taker;
    }();
    if (!stands)
        position->epSquare = OV_NO_EP_SQUARE;
    return stands ? 1 : 0;
}

int IsStartPosition(const sPosition* position)
{
    return std::memcmp(position, &StartPosition, sizeof(sPosition)) == 0 ? 1 : 0;
}
