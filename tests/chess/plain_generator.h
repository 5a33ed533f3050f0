// The move generator as plainly as it can be written: edge tests step by step, every free candidate
// tried on a copy of the record. The library's shortcuts must give the same answers.
#ifndef ORVAN_TESTS_CHESS_PLAIN_GENERATOR_H
#define ORVAN_TESTS_CHESS_PLAIN_GENERATOR_H

#include <cstdint>
#include <vector>

#include "orvan.h"

// The legal destinations of the man on `from`, in generation order.
std::vector<int> PlainDestinations(const sPosition& position, int from);

// Whether no man of the side to move has a legal destination.
bool PlainHasNoMove(const sPosition& position);

// Bit 1 when another man of the mover's code on another file may legally go there, bit 2 on the same file.
int PlainAmbiguity(const sPosition& position, uint32_t move);

// After the move: 1 when the side to move is in check, 2 when it has no legal move, 3 both.
int PlainOutcome(const sPosition& position, uint32_t move);

#endif
