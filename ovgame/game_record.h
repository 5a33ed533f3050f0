// The packed form of a stored game. One record:
//   status byte; layout byte (bit 0 set-up position, bit 1 comments, bit 2
//   game signature differs from the standard game's, bit 3 wide counts,
//   bits 4-5 result);
//   a varint mask of present header fields, then each present field (texts
//   as numbers of the file's name dictionary, numbers as zigzag varints);
//   the main line length; the game signature; the set-up position if any;
//   the move tree (varint size, then tokens); the comments if any.
// A move token names the mover by its rank among the side's men in square
// order (4 bits) and the destination by its place among that man's targets
// (4 bits, or an escape and a second byte that also carries an
// underpromotion), so that most moves take one byte. Side lines are written
// between a start and an end token, behind the move they replace.
#ifndef OVGAME_GAME_RECORD_H
#define OVGAME_GAME_RECORD_H

#include <cstddef>
#include <cstdint>
#include <vector>

#include "ovgame/byte_stream.h"
#include "ovgame/game_buffer.h"
#include "ovgame/name_dictionary.h"

namespace ovg {

// The status byte is the first of a record, so that a delete mark is one byte.
constexpr size_t StatusOffset = 0;

enum class PackResult { Done, TooManyMen, DictionaryFull };

// The header part of a record as stored: text fields as dictionary numbers
// (0 for an absent field), numbers as they are.
struct PackedHeader {
    uint8_t status = 0;
    uint8_t layout = 0;
    uint32_t texts[TextFieldCount] = {};
    int32_t round = 0;
    int32_t elo[2] = {0, 0};
    int32_t time[2] = {0, 0};
    int32_t date[3] = {0, 0, 0};
    int32_t result = 0;
    int32_t mainLength = 0;  // main line half-moves
};

// Reads the header part from the start of a record; false when damaged.
bool ReadPackedHeader(ByteReader& in, PackedHeader& header);

// Appends the record of `game` to `out`, adding unknown header texts to `names`.
PackResult PackGame(const GameBuffer& game, NameDictionary& names, std::vector<uint8_t>& out);

// Reads header fields, main line length and (with `withStatus`) the status
// flags into `game` and empties its tree. False for a damaged record.
// The texts stay numbers of `names` until a getter asks for them.
bool ReadHeader(GameBuffer& game, const uint8_t* data, size_t size, const SharedNames& names, bool withStatus);
// Reads the whole game into `game`, which then stands on its initial position.
bool UnpackRecord(GameBuffer& game, const uint8_t* data, size_t size, const SharedNames& names);
// Whether a position of the game, in any line, equals the pattern of
// `game`: 1 yes, with the whole game read into `game`; 0 no, with its header
// and status read; -1 damaged record.
int UnpackOnPattern(GameBuffer& game, const uint8_t* data, size_t size, const SharedNames& names);
// The length of the record without its comments section (which is at its
// end), and the layout byte to use then; false for a damaged record.
bool LengthWithoutComments(const uint8_t* data, size_t size, size_t& length, uint8_t& layout);
constexpr size_t LayoutOffset = 1;

}  // namespace ovg

#endif
