// The PgnGame record's helpers: its tag and result tables, the per-game reset,
// and the storage that lays out a record with all its arrays.
#ifndef ORVAN_PGN_PGN_GAME_H
#define ORVAN_PGN_PGN_GAME_H

#include <array>
#include <cstdint>

#include "orvan.h"

// Tag numbers, 1 to 20: the slot of tag number n is tags[n - 1].
enum PgnTagNumber : int32_t {
    TagEvent = 1, TagSite, TagDate, TagRound, TagWhite, TagBlack, TagResult,
    TagWhiteTitle, TagBlackTitle, TagWhiteElo, TagBlackElo, TagWhiteCountry,
    TagBlackCountry, TagWhiteTime, TagBlackTime, TagEco, TagAnnotator, TagSetUp,
    TagFen, TagRemark
};

// The tag names by tag number - 1, as they are written.
inline constexpr std::array<const char*, PGN_TAG_COUNT> PgnTagNames = {
    "Event", "Site", "Date", "Round", "White", "Black", "Result",
    "WhiteTitle", "BlackTitle", "WhiteElo", "BlackElo", "WhiteCountry",
    "BlackCountry", "WhiteTime", "BlackTime", "ECO", "Annotator", "SetUp",
    "FEN", "Remark"};

// Result numbers in PGN order, the values of PgnGame.resultToken.
enum PgnResult : int32_t {
    PgnResultNone = -1, PgnResultUnknown = 0, PgnResultWhiteWins = 1,
    PgnResultBlackWins = 2, PgnResultDraw = 3
};

// The result texts by result number 0 to 3.
inline constexpr std::array<const char*, 4> PgnResultTokens = {"*", "1-0", "0-1", "1/2-1/2"};

// Room that ResultTokenText needs: the longest result text and its NUL.
inline constexpr int PgnResultTextSize = 8;

// Entries of PgnGame.nags and PgnGame.commentIndex: one per move and one for
// the game as a whole.
inline constexpr int PgnAnnotationEntries = PGN_MAX_MOVES + 1;

// Gets the record ready for the next game: empties the 20 tag slots (first
// character only), zeroes the counts and entry 0 of moves, nags and
// commentIndex, sets commentUsed to 1 and resultToken to -1. Pointers,
// position and the other array entries stay as they are.
void ResetPgnGame(PgnGame* game);

// ResetPgnGame, then zeroes all entries of nags and commentIndex and sets the
// position to the standard start position.
void ClearPgnGame(PgnGame* game);

// Copies the result text of `number` (taken modulo 4, so -1 gives "1/2-1/2")
// into `dest`, which holds at least PgnResultTextSize characters.
void ResultTokenText(char* dest, int32_t number);

// The first entry of the alternative to the move at entry `branch` of the flat
// tree `moves`, which carries MoveBranch: the entry behind the walk from
// `branch` that counts each MoveBranch up and each MoveLineEnd down until it
// is back at 0. `end` (one behind the tree) when the walk runs off the tree,
// which means the tree is corrupt.
uint32_t PgnAlternativeEntry(const PackedMove* moves, uint32_t branch, uint32_t end);

// The two heap arrays of a record. The game reader replaces them in the middle
// of a read when a game has variations, so they are allocated and freed only
// through these functions. Allocation returns null when memory is short; the
// entries are not initialised.
uint16_t* AllocateNagArray();
uint32_t* AllocateCommentIndexArray();
void FreeNagArray(uint16_t* nags);
void FreeCommentIndexArray(uint32_t* commentIndex);

// A PgnGame laid out with all its stores: the position, the move tree and the
// comment text inside the object, the glyph and comment index arrays on the
// heap. Whatever the record's two heap pointers hold when the object goes is
// freed, once. The record is reset and its two heap arrays zeroed on
// construction. About 75 kilobytes: an
// automatic variable of the operation that runs a read or a conversion.
class PgnGameStorage {
public:
    PgnGameStorage();
    ~PgnGameStorage();
    PgnGameStorage(const PgnGameStorage&) = delete;
    PgnGameStorage& operator=(const PgnGameStorage&) = delete;

    // False when one of the two heap arrays could not be allocated; the record
    // must then not be used.
    bool Allocated() const { return game_.nags != nullptr && game_.commentIndex != nullptr; }

    PgnGame* Game() { return &game_; }
    const PgnGame* Game() const { return &game_; }

private:
    PgnGame game_{};
    sPosition position_{};
    PackedMove moves_[PGN_MAX_MOVES]{};
    char commentText_[PGN_COMMENT_STORE]{};
};

#endif
