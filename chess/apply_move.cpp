// Playing a move on a position, and the exported form of it.
#include "chess/move_generator.h"
#include "chess/packed_move.h"
#include "chess/piece_codes.h"
#include "chess/position.h"

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
