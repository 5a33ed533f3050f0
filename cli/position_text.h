// Positions as text: FEN in and out, and a board diagram.
#ifndef ORVAN_CLI_POSITION_TEXT_H
#define ORVAN_CLI_POSITION_TEXT_H

#include <string>
#include <string_view>

#include "orvan.h"

namespace orvan_cli {

// Reads the first four fields of a FEN (placement, side, castling, en
// passant; the move counters may follow and are ignored). Throws CliError
// (usage) with the reason when the text is no FEN or the position could not
// arise in a game.
sPosition ParseFen(std::string_view fen);

// The FEN of `position`; the half-move clock is written as 0.
std::string FormatFen(const sPosition& position, int32_t fullMoveNumber);

// Eight ranks of pieces (white in capitals, '.' for empty squares), rank 8
// first, with file letters and rank numbers.
std::string BoardDiagram(const sPosition& position);

}  // namespace orvan_cli

#endif
