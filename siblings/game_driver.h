// The game driver contract: the calls liborvan makes into libovgame.so, the
// game store. Handles are 32-bit values from the store's own tables, 0 = none:
// a game file, a game buffer, and a move (a node of a buffer's move tree, which
// names its buffer, so that it is usable without it). An invalid or stale
// handle (never issued, closed, freed) gets the call's failure result.
// Text inside the store is code page 437; stored header texts hold at most 255
// characters and are cut beyond. Game numbers count from 1. A game file may be
// used from several threads when the caller serialises the calls; a game buffer
// belongs to one thread at a time.
#ifndef ORVAN_SIBLINGS_GAME_DRIVER_H
#define ORVAN_SIBLINGS_GAME_DRIVER_H

#include <cstdint>

#include "orvan.h"
#include "siblings/driver_records.h"

#define OVGAME_API __attribute__((visibility("default")))

// Room the driver fills at most through GetLComment, in bytes.
constexpr int32_t OvgLongCommentBlockSize = 5000;
// Room the driver fills at most through IGMoveGetSComment and the text getters.
constexpr int32_t OvgTextSize = 256;

// Status flag numbers of IGGameGetStatus and IGGamePutStatus (0 to 7).
enum : int32_t {
    OvgStatusDeleted = 0,    // the game is marked deleted in its file
    OvgStatusSetUp = 1,      // the game starts from a set-up position
    OvgStatusAnnotated = 2,  // the game carries comments or glyphs
    OvgStatusVariations = 6, // the game holds side lines
};

// Bits of IGFileStatus.
enum : int32_t {
    OvgFileOpen = 1,        // the handle names an open game file
    OvgFileInBulk = 2,      // a bulk operation is running on it
    OvgFileHasDeleted = 4,  // at least one game of the file is marked deleted
};

// Driver sort codes of OvgIndexSort and OvgIndexCreate (1 to 19), and the
// code of the status index that OvgIndexDelete removes.
enum : int32_t {
    OvgSortWhite = 1, OvgSortBlack = 2, OvgSortWhiteElo = 3, OvgSortBlackElo = 4,
    OvgSortWhiteTitle = 5, OvgSortBlackTitle = 6, OvgSortWhiteCountry = 7,
    OvgSortBlackCountry = 8, OvgSortSite = 9, OvgSortPlace = 10,
    OvgSortAnnotator = 11, OvgSortResult = 12, OvgSortKeycode = 13,
    OvgSortRound = 14, OvgSortRemark = 15, OvgSortDate = 16,
    OvgSortLoadnumber = 17, OvgSortMoves = 18, OvgSortStatus = 19,
    OvgStatusIndex = 16384,
};

extern "C" {

// ---- Driver life: install and init at load, fini and remove at unload ----

// Registers the driver; `mode` 0 is the only mode. Result 0 on success.
OVGAME_API int32_t IGInstallGameDriver(int32_t mode);
// Prepares the driver's tables; `maxGames` is a hint for the handle tables.
// Result 0 on success.
OVGAME_API int32_t IGGameDriverInit(int32_t maxGames);
// Closes whatever the host left open. Result 0.
OVGAME_API int32_t IGGameDriverFini(void);
// Unregisters the driver. Result 0.
OVGAME_API int32_t IGRemoveGameDriver(void);
// Stores the version word through `version` (and 0 through `second` when not
// null). Result 0 is a failure.
OVGAME_API int32_t OvgGetVersion(uint32_t* version, uint32_t* second);

// ---- Game files ----

// Opens the game file at `path`; `create` 1 makes a new empty file, replacing
// any file of that name. Result the file handle, 0 when the file cannot be
// opened or made, or is no game file (truncated, garbage, other format).
OVGAME_API uint32_t OvgOpenGamefile(const char* path, int32_t create);
// Ends a bulk operation left open, and closes the file. Result 1, 0 for a
// handle that is not open.
OVGAME_API int32_t OvgCloseGamefile(uint32_t file);
// Copies the path the file was opened with into `path` of `size` bytes,
// terminated and cut. Result the length of the whole path, 0 for a handle that
// is not open. (The key database tells its own game file by it.)
OVGAME_API int32_t OvgGetGamefilePath(uint32_t file, char* path, int32_t size);
// Number of games in the file, deleted ones included (the highest game
// number); -1 for a handle that is not open.
OVGAME_API int32_t OvgGetNumberOfGames(uint32_t file);
// The OvgFile* bits of the file that are also in `mask` (0 asks all bits);
// 0 for a handle that is not open.
OVGAME_API int32_t IGFileStatus(uint32_t file, int32_t mask);
// `action` 1 begins a bulk operation for reading or writing, 2 one that takes
// the file's write lock at once; 0 ends one, committing its writes. Bulk
// operations nest; only the outermost end commits. A crash loses at most the
// writes of an unfinished bulk operation. Result 1, 0 on failure (handle, no
// bulk operation to end, a failed commit).
OVGAME_API int32_t OvgFileAction(uint32_t file, int32_t action);

// ---- Stored games ----

// Loads game `number` whole into `game`, which then stands on its initial
// position with its source number unchanged; `mode` must be 0. Result
// non-zero on success, 0 for a bad handle, a number out of range or a
// damaged record (the buffer is then empty).
OVGAME_API int32_t OvgLoadGame(uint32_t game, uint32_t file, int32_t number, int32_t mode);
// Loads only the header fields and status flags of game `number`; the move
// tree is emptied. Result non-zero on success, 0 as for OvgLoadGame.
OVGAME_API int32_t OvgLoadGameHeader(uint32_t game, uint32_t file, int32_t number);
// Appends the game of `game` to the file (`mode` must be 0) and stores its new
// number through `out` when not null. Outside a bulk operation the write is
// committed on return: it survives a crash of the process (the file keeps a
// write-ahead log with normal syncing, so a power loss may take the last
// commits, never the file's consistency). Result the new game number
// (non-zero) on success, 0 on failure.
OVGAME_API int32_t OvgWriteGame(uint32_t game, uint32_t file, int32_t mode, int32_t* out);
// Marks game `number` deleted. Result 0 on success, -1 on failure.
OVGAME_API int32_t OvgDeleteGame(uint32_t file, int32_t number);
// Clears the deleted mark of game `number`. Result 0 on success, -1 on failure.
OVGAME_API int32_t OvgUndeleteGame(uint32_t file, int32_t number);
// Copies up to `maxGames` packed games, from the game with index `first`
// (counted from 0) on, into `buffer` of `bufferSize` bytes, as many as fit.
// `places` has room for `maxGames` + 1 values: game k of the batch lies at
// buffer + places[k] - places[0] and ends where game k + 1 begins. A game too
// large for the whole buffer comes without its comments. Result the number of
// games delivered, 0 at the end of the file, -1 on failure.
OVGAME_API int32_t OvgReadGames(uint32_t file, int32_t first, void* buffer, uint32_t* places,
                                int32_t bufferSize, int32_t maxGames);
// Reads the header fields of a packed game from OvgReadGames into `game`;
// `mode` must be 0, `withStatus` non-zero also reads its status flags. The
// move tree is emptied. Result 1, 0 for a bad handle or a damaged record.
OVGAME_API int32_t GetGameHeader(uint32_t game, const void* packed, int32_t mode,
                                 int32_t withStatus);
// `mode` 0: unpacks the whole packed game into `game`, which then stands on
// its initial position; result 1, 0 for a bad handle or damaged record.
// `mode` 2: tests whether any position of the packed game, in any line,
// equals the exact pattern of `game` (PatExactPosition), and loads its header
// and status flags; on a hit the whole game is unpacked as for mode 0. The
// pattern stays. Result 1 for a hit, 0 for none, -1 for a bad handle, a
// damaged record or no pattern.
OVGAME_API int32_t UnpackGame(uint32_t game, const void* packed, int32_t mode);

// ---- Game buffer ----

// A new empty game buffer. Result the handle, 0 when no memory or no slot is
// left.
OVGAME_API uint32_t IGGameOpenGame(void);
// Frees a game buffer. Result 1, 0 for a handle that is not open.
OVGAME_API int32_t IGGameCloseGame(uint32_t game);
// Empties the game for building: standard start position, no moves, empty
// header, no result, all status flags clear, source number 0. The exact
// pattern stays. Result 1, 0 for a bad handle.
OVGAME_API int32_t NewGameErase(uint32_t game);
// Goes back to the initial position. Result 1, 0 for a bad handle.
OVGAME_API int32_t NewGameRewind(uint32_t game);
// Status flag `number` (0 to 7, OvgStatus*): 1 when set, else 0.
OVGAME_API int32_t IGGameGetStatus(uint32_t game, int32_t number);
// Sets (`value` non-zero) or clears status flag `number`. Result 1, 0 for a
// bad handle or number.
OVGAME_API int32_t IGGamePutStatus(uint32_t game, int32_t number, int32_t value);

// Header text getters: a pointer to the buffer's own terminated text, valid
// until the next change of the buffer; when `copy` is not null the text is
// also copied there (room for OvgTextSize bytes). Null for a bad handle.
// `side` is 0 for White, 1 for Black.
OVGAME_API const char* IGGameGetPlace(uint32_t game, char* copy);      // event
OVGAME_API const char* IGGameGetSite(uint32_t game, char* copy);
OVGAME_API const char* IGGameGetAnnotator(uint32_t game, char* copy);
OVGAME_API const char* IGGameGetPlayer(uint32_t game, int32_t side, char* copy);
OVGAME_API const char* IGGameGetCountry(uint32_t game, int32_t side, char* copy);
OVGAME_API const char* IGGameGetTitle(uint32_t game, int32_t side, char* copy);
OVGAME_API const char* IGGameGetKeycode(uint32_t game, char* copy);    // opening code
OVGAME_API const char* IGGameGetRemark(uint32_t game, char* copy);
// Header number getters; 0 for a bad handle.
OVGAME_API int32_t IGGameGetRound(uint32_t game);
OVGAME_API int32_t IGGameGetElo(uint32_t game, int32_t side);
OVGAME_API int32_t IGGameGetTime(uint32_t game, int32_t side);  // minutes
// The result, `part` 0: 1 White wins, 2 draw, 3 Black wins, 0 none.
OVGAME_API int32_t IGGameGetResult(uint32_t game, int32_t part);
// The date triple year, month, day (0 = unknown part): with `triple` null a
// pointer to the buffer's own triple, else the triple is filled and `triple`
// returned. Null for a bad handle.
OVGAME_API const int32_t* IGGameGetDate(uint32_t game, int32_t* triple);
// The number of the game in the file it was loaded from, as put; 0 if none.
OVGAME_API int32_t IGGameGetSourceLoadnumber(uint32_t game);
// Half-moves of the main line.
OVGAME_API int32_t IGGameGetGamelength(uint32_t game);

// Header putters: texts are terminated code page 437, cut to 255 characters,
// null stores the empty text. Result 1, 0 for a bad handle or side.
OVGAME_API int32_t IGGamePutPlace(uint32_t game, const char* text);
OVGAME_API int32_t IGGamePutSite(uint32_t game, const char* text);
OVGAME_API int32_t IGGamePutAnnotator(uint32_t game, const char* text);
OVGAME_API int32_t IGGamePutPlayer(uint32_t game, int32_t side, const char* text);
OVGAME_API int32_t IGGamePutCountry(uint32_t game, int32_t side, const char* text);
OVGAME_API int32_t IGGamePutTitle(uint32_t game, int32_t side, const char* text);
OVGAME_API int32_t IGGamePutKeycode(uint32_t game, const char* text);
OVGAME_API int32_t IGGamePutRemark(uint32_t game, const char* text);
OVGAME_API int32_t IGGamePutRound(uint32_t game, int32_t round);
OVGAME_API int32_t IGGamePutElo(uint32_t game, int32_t side, int32_t elo);
OVGAME_API int32_t IGGamePutTime(uint32_t game, int32_t side, int32_t minutes);
// `result` in the order of IGGameGetResult; `part` must be 0.
OVGAME_API int32_t IGGamePutResult(uint32_t game, int32_t result, int32_t part);
// `triple` year, month, day; null stores 0, 0, 0.
OVGAME_API int32_t IGGamePutDate(uint32_t game, const int32_t* triple);
OVGAME_API int32_t IGGamePutSourceLoadnumber(uint32_t game, int32_t number);

// ---- Board ----

// The BoardRecord of the current position, owned by the buffer and valid
// until it moves or changes; null for a bad handle.
OVGAME_API const BoardRecord* IGGameGetBoard(uint32_t game);
// Fills `board` (when not null) with the initial position. Result 1 for a game
// from the standard start, 2 for a set-up game, 0 for a bad handle.
OVGAME_API int32_t GetInitialPosition(uint32_t game, BoardRecord* board);
// Fills `board` with the standard start position: white to move, all four
// castling flags, no en passant file, ply 1. Result 1, 0 for null.
OVGAME_API int32_t IGNewBoard(BoardRecord* board);
// The castling flags (DrvCastle*) that the board's kings and rooks on their
// home squares allow; 0 for null.
OVGAME_API int32_t CastlingRights(const BoardRecord* board);
// Makes the squares of `board` with `castling` flags (cut to what
// CastlingRights allows), `epFile` (1 to 8, 0 none) and `ply` (odd: white to
// move, even: black) the initial position of the game, drops its moves, and
// sets the set-up status unless it is the standard start at ply 1. Result 1,
// 0 for a bad handle, null board or ply below 1.
OVGAME_API int32_t BoardToInitialPosition(uint32_t game, const BoardRecord* board,
                                          int32_t castling, int32_t epFile, int32_t ply);

// ---- Walking ----

// Moves `count` plies: forward along the main continuation of the current
// node, backward towards the initial position (also out of side lines).
// Result the number of plies moved, above 0 when moves were made, 0 at an end
// of the game or for a bad handle.
OVGAME_API int32_t PlayMoves(uint32_t game, int32_t count);
// Plies played from the initial position + 1; 0 for a bad handle.
OVGAME_API int32_t IGGameGetCM(uint32_t game);
// The move that PlayMoves(game, 1) would play, without playing it; 0 if none.
OVGAME_API uint32_t IGNextMove(uint32_t game);
// Makes the current position (squares, side to move, castling flags, en
// passant file) the exact pattern that UnpackGame mode 2 tests for. Result 1,
// 0 for a bad handle.
OVGAME_API int32_t PatExactPosition(uint32_t game);

// ---- Move tree ----

// The root node of the tree (no move itself; its NEXT is the first move);
// 0 when the game has no moves or for a bad handle.
OVGAME_API uint32_t IGGameGetFirstMove(uint32_t game);
// The next move of the line (the main continuation); 0 at the line's end.
OVGAME_API uint32_t IGMoveGetNEXT(uint32_t move);
// The next alternative to `move` from the same position; 0 if none.
OVGAME_API uint32_t IGMoveGetALT(uint32_t move);
// Fills `xy` with the move; the fifth value is the promotion piece as a
// driver code, 0 for none. Result 1, 0 for a bad handle or the root.
OVGAME_API int32_t IGMoveGetXY(uint32_t move, MoveXY* xy);
// The node of the current position: the move played last, or the root at the
// initial position (comments there belong to the game as a whole).
OVGAME_API uint32_t IGGameGetMovePtr(uint32_t game);
// The first free subline number at `move`, not below `from`: sublines 0, 1, ...
// are the continuations of the node, 0 the main one. 0 for a bad handle.
OVGAME_API uint32_t IGMoveFirstFreeSubline(uint32_t move, int32_t from);
// Arms `move`, which must be the current node, so that the next AcceptMove
// enters subline `subline` (at least 1): an existing one if it holds that
// move, else a new alternative at the end. Result 1, 0 on failure.
OVGAME_API int32_t IGMovePutAL(uint32_t move, uint32_t subline);
// Replaces the move's long comment by `count` terminated lines that follow
// one another in `lines`; count 0 removes it. Result 1, 0 on failure (more
// than 60000 bytes in all).
OVGAME_API int32_t IGMovePutLComment(uint32_t move, const char* lines, int32_t count);
// Fills `block` with a 16-bit unsigned count of lines, followed by the lines,
// each terminated; at most OvgLongCommentBlockSize bytes, and lines that do
// not fit are left out. Result the count; 0 for none or a bad handle (the
// count 0 is then still written when `block` is not null).
OVGAME_API int32_t GetLComment(uint32_t move, void* block);
// Replaces the move's short comment (glyph text) by `text`, cut to 255
// characters; null or empty removes it. Result 1, 0 for a bad handle.
OVGAME_API int32_t IGMovePutSComment(uint32_t move, const char* text);
// Copies the short comment into `text` (room for OvgTextSize bytes). Result 1
// when there is one, else 0 and `text` is empty.
OVGAME_API int32_t IGMoveGetSComment(uint32_t move, char* text);

// ---- Building (the store's own legality test) ----

// Non-zero when `xy` is a legal move in the current position; for a
// promotion it puts the queen code (12 White, 20 Black) into the fifth value.
OVGAME_API int32_t LegalMove(uint32_t game, MoveXY* xy);
// Plays `xy` (fifth value: promotion piece code, 0 or a queen code for a
// queen) from the current position into the tree: into an armed subline
// (IGMovePutAL), else into an existing continuation with that move, else as a
// new continuation (the main one if there is none). The move becomes the
// current node. Result 1, 0 for an illegal move or a full tree.
OVGAME_API int32_t AcceptMove(uint32_t game, const MoveXY* xy);

// ---- Sort indexes of a game file, kept as files in a directory ----

// Builds or renews the sort indexes of `file` in `directory`: `codes` a mask
// of sort codes (bit n - 1 for code n; 0 = all 19); `reserved1` to
// `reserved4` must be 0. Result the number of indexes written, 0 on failure.
OVGAME_API int32_t OvgIndexCreate(uint32_t file, intptr_t codes, intptr_t reserved1,
                                  const char* directory, intptr_t reserved2,
                                  intptr_t reserved3, intptr_t reserved4);
// Removes the index of `code` (OvgStatusIndex or a sort code) of `file` from
// the directory `directory` (a const char* passed as a value). Result 0 on
// success, -1 on failure.
OVGAME_API int32_t OvgIndexDelete(uint32_t file, int32_t code, intptr_t directory);
// Stores game numbers in the order of sort code `code` (`direction` 1
// ascending, -2 descending; ties in game order) into `numbers` (an int32_t*
// passed as a value) with room for `count`; `firstGame` is the number to begin
// with (1 or below: the first), `skipDeleted` non-zero leaves deleted games
// out. Result the number of games in order (may exceed `count`), 0 for no
// game, -1 on failure.
OVGAME_API int32_t OvgIndexSort(uint32_t file, intptr_t firstGame, intptr_t skipDeleted,
                                int32_t count, int32_t code, int32_t direction,
                                intptr_t numbers);

}  // extern "C"

#endif
