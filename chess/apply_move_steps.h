// The steps of playing a move, for the callers that need them also for the
// word 0 (the step a1-a1), which ApplyMove leaves alone.
#ifndef ORVAN_CHESS_APPLY_MOVE_STEPS_H
#define ORVAN_CHESS_APPLY_MOVE_STEPS_H

#include <cstdint>

#include "orvan.h"

// En passant square, castling fields, the men, the promotion piece and the
// side to move, for any word.
void ApplyMoveSteps(sPosition* position, uint32_t move);

#endif
