// Playing a move on a position, and the exported form of it.
#include "chess/move_generator.h"
#include "chess/packed_move.h"
#include "chess/piece_codes.h"
#include "chess/position.h"

namespace {

// The fields a move changes besides the men: the en passant square and the
// castling rights.
void UpdateMoveFields(sPosition* position, uint8_t piece, int from, int to)
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
    constexpr uint64_t Corners = 0x8100000000000081ull;
    const int values = position->castleWhiteLong | position->castleWhiteShort | position->castleBlackLong |
                       position->castleBlackShort;
    if (values == 0 || (values == 1 && ((Corners >> from) & 1) == 0 && ((Corners >> to) & 1) == 0))
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

}  // namespace

void ApplyMoveSteps(sPosition* position, uint32_t move)
{
    const int from = MoveFrom(move);
    const int to = MoveTo(move);
    const uint8_t piece = position->board[from];

    UpdateMoveFields(position, piece, from, to);
    MakeBoardMove(position, from, to);
    if (piece == OV_WHITE_PAWN && from >= 48)
        position->board[to] = WhitePromotionPieces[MovePromotion(move)];
    if (piece == OV_BLACK_PAWN && from < 16)
        position->board[to] = BlackPromotionPieces[MovePromotion(move)];
    position->sideToMove ^= 1;
}

void ApplyPlainMove(sPosition* position, int from, int to)
{
    const uint8_t piece = position->board[from];
    UpdateMoveFields(position, piece, from, to);
    position->board[to] = piece;
    position->board[from] = 0;
    position->sideToMove ^= 1;
}

void ApplyMove(sPosition* position, uint32_t move)
{
    if (position == nullptr || (move & 0xFFFF) == 0)
        return;
    ApplyMoveSteps(position, move);
}

int32_t OvPlayMove(sPosition* position, uint32_t move)
{
    if (position == nullptr)
        return 0;
    ApplyMove(position, move);
    return 1;
}
