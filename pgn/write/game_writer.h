// Writing one whole PgnGame as PGN text: the tag section, an empty line, the
// movetext with the result, and the empty line that ends every game.
#ifndef ORVAN_PGN_WRITE_GAME_WRITER_H
#define ORVAN_PGN_WRITE_GAME_WRITER_H

#include <cstdint>

#include "orvan.h"
#include "pgn/write/pgn_sink.h"

// Width of a movetext line: a token stays on its line while the line keeps
// below this many characters, so a line has at most 76.
inline constexpr int32_t PgnLineWidth = 77;

// The text mode of the written move texts: "=" before a promotion letter.
inline constexpr uint32_t PgnMoveTextMode = 4;

// Writes `game` to `sink`. The tag section always holds Event, Site, Date,
// Round, White, Black and Result (an empty slot other than Result as "?", the
// date in the form yyyy.mm.dd), then the titles, Elo values, countries and
// times of White and of Black, Annotator, ECO and Remark when they are set,
// and SetUp and FEN when the game does not start from the standard position
// (the FEN made from the start position; the FEN slot is not read). Tag values
// are written as they stand, without escapes. Then an empty line, the
// movetext in lines of at most 76 characters ending with the Result slot's
// text, and two line feeds. Writes nothing else and keeps no state; a file
// sink has handed everything to its stream when this returns. The record is
// read only; it must be laid out as PgnGameStorage does.
void PgnWriteGame(PgnSink& sink, const PgnGame& game);

#endif
