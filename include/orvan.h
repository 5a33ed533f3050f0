/*
 * orvan.h: the public interface of liborvan, a chess game database library.
 *
 * A host opens game files and a key database, reads, writes and searches
 * games, walks through their moves, and brings games in and out as PGN.
 *
 * Conventions that hold for every operation unless its comment says otherwise:
 *  - Results are 32-bit integers; most operations return 1 for done, 0 for failed.
 *  - Text goes into the caller's buffer with a size; it is always terminated
 *    (when the size is above 0) and cut without notice.
 *  - Text at this boundary is Windows-1252; text inside the game store and the
 *    key database is code page 437.
 *  - Game numbers count from 1.
 *  - Game file and game buffer handles are opaque 32-bit values, 0 meaning none.
 *    A handle that is not open gets the operation's failure result.
 *  - Values that belong to the host and are passed on untouched to its callbacks
 *    are intptr_t, so that a host can pass a pointer.
 *  - The header compiles as C (C11) and as C++.
 */
#ifndef ORVAN_H
#define ORVAN_H

#include <stddef.h>
#include <stdint.h>

#if defined(__GNUC__)
#define ORVAN_API __attribute__((visibility("default")))
#else
#define ORVAN_API
#endif

#ifdef __cplusplus
#define ORVAN_STATIC_ASSERT static_assert
extern "C" {
#else
#define ORVAN_STATIC_ASSERT _Static_assert
#endif

/* ------------------------------------------------------------------------ */
/* Handles                                                                   */
/* ------------------------------------------------------------------------ */

typedef uint32_t OvGameFile;   /* an open game file, 0 = none */
typedef uint32_t OvGameBuffer; /* a game buffer holding one game, 0 = none */

/* ------------------------------------------------------------------------ */
/* Platform services                                                          */
/* ------------------------------------------------------------------------ */

/*
 * Receives each debug trace record of the library, e.g. "OrvanDll: ...".
 * `text` is terminated and valid only during the call. `user` is the value
 * given to OvSetDebugSink.
 */
typedef void (*OvDebugSink)(const char* text, intptr_t user);

/*
 * Sets the receiver of debug trace records; null drops them (the default).
 * The sink may be called from any thread that calls into the library, and
 * must not call back into the library. Thread-safe.
 */
ORVAN_API void OvSetDebugSink(OvDebugSink sink, intptr_t user);

/* Message box styles the library uses. */
#define OV_MB_OK 0x00000000u
#define OV_MB_ICONSTOP 0x00000010u
#define OV_MB_ICONEXCLAMATION 0x00000030u
/* The answer of a box with only an OK button. */
#define OV_IDOK 1

/*
 * Shows a message box for the library: `owner` is the window handle the caller
 * passed (always null in this library), `text` and `caption` are terminated,
 * `style` is a combination of OV_MB_* values. Returns the button chosen.
 */
typedef int32_t (*OvMessageSink)(void* owner, const char* text, const char* caption,
                                 uint32_t style, intptr_t user);

/*
 * Sets the receiver of message boxes. With none set (the default, or null),
 * the caption and the text go to standard error and the box counts as
 * answered with OV_IDOK. Thread-safe.
 */
ORVAN_API void OvSetMessageSink(OvMessageSink sink, intptr_t user);

/*
 * Movable memory blocks. A host makes the input text of OvMemReadPgnGame with
 * them and frees the PGN text that OvCreatePgnGame returns.
 *
 * GlobalAlloc(flags, bytes): a block of `bytes` bytes. GMEM_FIXED gives a
 * handle that is itself the address of the memory; GMEM_MOVEABLE gives a
 * handle to pass to GlobalLock. GMEM_ZEROINIT zero-fills. Returns null when
 * memory runs out. A block of 0 bytes is valid.
 * GlobalReAlloc(block, bytes, flags): resizes (GMEM_ZEROINIT zero-fills the
 * growth); returns the block's handle, which may differ from `block`, or null
 * on failure, when the old block stays valid.
 * GlobalLock(block): the address of the memory, counting one more lock; null
 * for an invalid handle. GlobalUnlock(block): counts one lock less; returns
 * non-zero while locks remain. GlobalSize(block): the size in bytes, 0 for an
 * invalid handle. GlobalFree(block): frees; returns null on success and
 * `block` itself for an invalid handle.
 * Handles that were never issued or are already freed are recognised and
 * refused. All functions are thread-safe; one block must not be resized or
 * freed while another thread uses it.
 */
typedef void* HGLOBAL;
#define GMEM_FIXED 0x0000u
#define GMEM_MOVEABLE 0x0002u
#define GMEM_ZEROINIT 0x0040u
#define GPTR (GMEM_FIXED | GMEM_ZEROINIT)
#define GHND (GMEM_MOVEABLE | GMEM_ZEROINIT)

ORVAN_API HGLOBAL GlobalAlloc(uint32_t flags, size_t bytes);
ORVAN_API HGLOBAL GlobalReAlloc(HGLOBAL block, size_t bytes, uint32_t flags);
ORVAN_API void* GlobalLock(HGLOBAL block);
ORVAN_API int32_t GlobalUnlock(HGLOBAL block);
ORVAN_API size_t GlobalSize(HGLOBAL block);
ORVAN_API HGLOBAL GlobalFree(HGLOBAL block);

/* ------------------------------------------------------------------------ */
/* Frame                                                                     */
/* ------------------------------------------------------------------------ */

/* Version word: first number in the high 16 bits, second in the low 16 bits. */
#define OV_VERSION_WORD 0x00010000u

/*
 * The version handshake. Stores this library's version word (1.0) through
 * `version` and 0 through `secondVersion`; either may be null. Asks both sibling
 * libraries for their version words; a sibling older than 1.0 gets a
 * "Version conflict" message box (key database first, then game store).
 * Returns 1 when both siblings are acceptable, else 0. Changes nothing.
 * Thread-safe.
 */
ORVAN_API int32_t OvGetVersion(uint32_t* version, uint32_t* secondVersion);

/* ------------------------------------------------------------------------ */
/* Chess core: position record and moves                                     */
/* ------------------------------------------------------------------------ */

/* Piece codes of sPosition: bit 8 marks white, the low three bits the kind. */
enum {
    OV_EMPTY = 0,
    OV_BLACK_PAWN = 1, OV_BLACK_KNIGHT = 2, OV_BLACK_BISHOP = 3,
    OV_BLACK_ROOK = 4, OV_BLACK_QUEEN = 5, OV_BLACK_KING = 6,
    OV_WHITE_PAWN = 9, OV_WHITE_KNIGHT = 10, OV_WHITE_BISHOP = 11,
    OV_WHITE_ROOK = 12, OV_WHITE_QUEEN = 13, OV_WHITE_KING = 14
};

/* No en passant square. */
#define OV_NO_EP_SQUARE 64

#pragma pack(push, 1)
/*
 * The public position record, 70 bytes. Squares are 8 * rank + file, a1 = 0,
 * h8 = 63. Castling fields: 0 right gone, 1 right stands with the rook on its
 * corner, n > 1 right stands with the rook on square n - 1.
 */
typedef struct sPosition {
    uint8_t board[64];
    uint8_t sideToMove;       /* 1 white to move, 0 black to move */
    uint8_t epSquare;         /* square a pawn may capture en passant on, 64 none */
    uint8_t castleWhiteLong;
    uint8_t castleWhiteShort;
    uint8_t castleBlackLong;
    uint8_t castleBlackShort;
} sPosition;
#pragma pack(pop)
ORVAN_STATIC_ASSERT(sizeof(sPosition) == 70, "sPosition is 70 bytes");
ORVAN_STATIC_ASSERT(offsetof(sPosition, sideToMove) == 64, "sPosition layout");
ORVAN_STATIC_ASSERT(offsetof(sPosition, epSquare) == 65, "sPosition layout");
ORVAN_STATIC_ASSERT(offsetof(sPosition, castleBlackShort) == 69, "sPosition layout");

/*
 * A move as a 16-bit word: from square in bits 0-5, to square in bits 8-13,
 * promotion in bits 14-15 (0 queen, 1 rook, 2 bishop, 3 knight). Bits 6 and 7
 * are tree markers of the PGN record and no part of the move. 0 = no move.
 */
typedef uint16_t PackedMove;

/* ---- chess core operations (position test, move, move text) ---- */

/*
 * The side to move is read from the lowest bit of sPosition.sideToMove
 * (1 white, 0 black), and a move flips that bit. Board bytes that are no
 * piece code (7, 8, 15 and above 15) are neither men nor empty: for the
 * legality of moves they block lines, and no man may take them.
 *
 * Threads: these operations take no lock and share no writable data. Those
 * that take a non-const position change it while they run (every trial move
 * is made and taken back on the caller's record), so one record must not be
 * used by two threads at the same time, even through OvGetMoveInfo.
 */

/* Results of OvIsLegalPos. */
#define OV_POS_LEGAL 0
#define OV_POS_KING_MISSING 1
#define OV_POS_OPPONENT_IN_CHECK 2
#define OV_POS_PAWN_ON_EDGE_RANK 3
#define OV_POS_TOO_MANY_MEN 4

/*
 * Tests whether `position` could arise in a game. Checks, in this order: a
 * king of each colour (the first in square order is the one tested), that the
 * side not to move is not in check, no pawn on the first or eighth rank, and
 * no more men of a kind than promotions can give (16 men, 1 king, queens +
 * pawns 9, rooks, bishops or knights + pawns 10, pawns 8). Castling fields
 * and the en passant square play no part.
 * Returns the first failure as an OV_POS_* value, OV_POS_LEGAL when none.
 * A null `position` gets OV_POS_KING_MISSING. Reads only the 70 bytes of the
 * record, whatever they hold.
 */
ORVAN_API int32_t OvIsLegalPos(const sPosition* position);

/*
 * Plays `move` (a PackedMove in the low 16 bits) on `position` without any
 * test: the en passant square, the castling rights (lost by a king move and
 * by anything leaving or reaching a rook's square), the men (castling moves
 * the rook too; a pawn moving diagonally onto an empty square takes en
 * passant), promotion (bits 0 give a queen) and the side to move. A word
 * whose 16 bits are 0 changes nothing. The move is not tested: any word is
 * played as it stands.
 * Returns 1; 0 only for a null `position`, which is left alone.
 */
ORVAN_API int32_t OvPlayMove(sPosition* position, uint32_t move);

/*
 * MoveInfo: one byte that says what a move's text needs.
 * Bits 0-2 the kind: OV_MOVE_KNIGHT .. OV_MOVE_KING (0-4), OV_MOVE_PAWN,
 * OV_MOVE_EN_PASSANT, OV_MOVE_PROMOTION. Bit 3 a capture. Bits 4-5 the
 * opponent's state after the move. Bit 6 the from file must be shown (with
 * the king: short castling), bit 7 the from rank (with the king: long
 * castling). An en passant capture is always 0x4E apart from bits 4-5.
 */
typedef uint8_t MoveInfo;
#define OV_MOVE_KNIGHT 0x00
#define OV_MOVE_BISHOP 0x01
#define OV_MOVE_ROOK 0x02
#define OV_MOVE_QUEEN 0x03
#define OV_MOVE_KING 0x04
#define OV_MOVE_PAWN 0x05
#define OV_MOVE_EN_PASSANT 0x06
#define OV_MOVE_PROMOTION 0x07
#define OV_MOVE_KIND_MASK 0x07
#define OV_MOVE_CAPTURE 0x08
#define OV_MOVE_CHECK 0x10       /* in check, with a legal move */
#define OV_MOVE_STALEMATE 0x20   /* not in check, no legal move */
#define OV_MOVE_MATE 0x30        /* in check, no legal move */
#define OV_MOVE_OUTCOME_MASK 0x30
#define OV_MOVE_SHOW_FILE 0x40
#define OV_MOVE_SHOW_RANK 0x80
#define OV_MOVE_SHORT_CASTLING (OV_MOVE_KING | OV_MOVE_SHOW_FILE)
#define OV_MOVE_LONG_CASTLING (OV_MOVE_KING | OV_MOVE_SHOW_RANK)

/*
 * NotationTable: the 16 characters of move text, not terminated. Places 0-4
 * the piece letters (knight, bishop, rook, queen, king), 5 the castling
 * letter, 6 the castling separator, 7 the capture mark (places 0-7 are copied
 * as they stand), then the two-character suffixes 8-9 check, 10-11 mate,
 * 12-13 stalemate, 14-15 en passant, in which a blank means no character.
 */
typedef struct NotationTable {
    char symbols[16];
} NotationTable;
ORVAN_STATIC_ASSERT(sizeof(NotationTable) == 16, "NotationTable is 16 characters");

/* The default table as text, and as an initialiser of a NotationTable. */
#define OV_DEFAULT_NOTATION "NBRQKO-x+ #   ep"
#define OV_DEFAULT_NOTATION_TABLE \
    { { 'N', 'B', 'R', 'Q', 'K', 'O', '-', 'x', '+', ' ', '#', ' ', ' ', ' ', 'e', 'p' } }

/* TextMode: the flags of OvMoveToText; other bits are ignored. */
typedef uint32_t TextMode;
#define OV_TEXT_LONG 0x1u            /* always the from square; "-" between the squares of a quiet move */
#define OV_TEXT_NO_PIECE_LETTER 0x2u /* leave out the piece letter */
#define OV_TEXT_PROMOTION_SIGN 0x4u  /* "=" before the promotion letter; the mode the library writes PGN with */

/* Room OvMoveToText needs: 9 characters and the terminator. */
#define OV_MOVE_TEXT_SIZE 10

/*
 * Describes `move`, a move of `position` (the position before the move), as
 * a MoveInfo: its kind, whether it captures, which parts of the from square
 * tell it apart from the same men that could also reach its square (pinned
 * men do not count), and whether the opponent is then in check, mated or
 * stalemated. Castling is recognised only as the king's two-square step
 * from e1 or e8 by the side to move.
 * Returns the MoveInfo in the low 8 bits. For a word that moves no man of
 * the position the byte has no meaning. Returns 0 for a null `position`.
 * `position` is changed while the call runs and comes back with all 70
 * bytes as they were, for any word.
 */
ORVAN_API int32_t OvGetMoveInfo(sPosition* position, uint32_t move);

/*
 * Writes the text of `move` (a PackedMove) as `info` (a MoveInfo, low 8
 * bits) describes it into `text`, with the symbols of `table` and the flags
 * of `mode` (TextMode), and a terminator. The text is at most 9 characters:
 * `text` needs OV_MOVE_TEXT_SIZE bytes, and no byte beyond them is written.
 * A null `table` means the default table. `info` is not checked against the
 * move: the text says what the byte says. No position is needed.
 * Returns the number of characters without the terminator; 0 with nothing
 * written for a null `text`. Runs on any thread.
 */
ORVAN_API int32_t OvMoveToText(uint32_t move, uint32_t info, char* text, TextMode mode,
                               const NotationTable* table);

/* ------------------------------------------------------------------------ */
/* PGN game record                                                           */
/* ------------------------------------------------------------------------ */

#define PGN_TAG_COUNT 20
#define PGN_TAG_SIZE 256
#define PGN_MAX_MOVES 10000
#define PGN_COMMENT_STORE 50000

/* Tree markers in the low byte of a PackedMove of PgnGame.moves. */
#define MoveLineEnd 0x80  /* last move of its line */
#define MoveBranch 0x40   /* at least one further line is an alternative to this move */

/*
 * One PGN game in memory. The record owns none of the memory behind its
 * pointers: whoever lays it out provides `position` (one sPosition), `moves`
 * (PGN_MAX_MOVES entries), `nags` and `commentIndex` (PGN_MAX_MOVES + 1
 * entries) and `commentText` (PGN_COMMENT_STORE bytes).
 */
typedef struct PgnGame {
    char tags[PGN_TAG_COUNT][PGN_TAG_SIZE]; /* slot n - 1 holds tag number n */
    uint32_t moveCount;       /* moves of the main line */
    uint32_t treeCount;       /* 0 without brackets, else all entries of `moves` */
    uint32_t firstMoveNumber; /* full-move number of the start position minus 1 */
    sPosition* position;      /* the start position */
    PackedMove* moves;        /* the flat move tree, depth first */
    uint16_t* nags;           /* index 0: the game; i + 1: moves[i]; two glyphs per entry */
    uint32_t* commentIndex;   /* offset into commentText, 0 = no comment */
    char* commentText;        /* the comment store */
    uint32_t commentUsed;     /* next free offset of commentText, starts at 1 */
    int32_t resultToken;      /* -1 none, 0 "*", 1 "1-0", 2 "0-1", 3 "1/2-1/2" */
} PgnGame;

/* ---- game files, game buffers and single games ---- */

/*
 * Game files.
 *
 * OvCreateGamefile(path): creates the game file `path` (replacing one of that
 * name) and opens it. Key files that an earlier game file of that name left in
 * its index directory ("OvIndex/" beside the file) are removed first. Returns
 * the open game file, or 0 on failure: a null `path`, a path whose directory
 * and "OvIndex/" together need more than 259 characters (no key files are
 * touched then), or a file the game store cannot create.
 *
 * OvOpenGamefile(path): opens the existing game file `path`. Returns the open
 * game file, or 0 when it cannot be opened (a null `path` among the causes).
 *
 * OvCloseGamefile(file): closes `file`; game buffers holding games of it stay
 * valid. Returns 1, also for a file that is not open.
 *
 * OvGetGamesCount(file): the number of games in `file`, deleted games
 * included; game numbers run from 1 to this count. -1 for a file that is not
 * open.
 *
 * OvFileStatus(file, reserved): the status bits of `file`, OV_FILE_OPEN and
 * OV_FILE_IN_BULK, from the key database when `file` is the open database's
 * game file, else from the game store; every other bit is dropped.
 * `reserved`: pass 0; it is handed on. A file that is not open gives 0.
 *
 * OvStartBulkOperation(file, mode): tells the game store that many reads or
 * writes of `file` follow, until OvEndBulkOperation(file), which makes the
 * writes between them durable together. `mode` OV_BULK_WRITE takes the file's
 * write lock at once; every other value (OV_BULK_ANY) starts a bulk operation
 * for reading or writing. Bulk operations nest; only the outermost end
 * commits. Both return 1, whatever the store answers.
 *
 * None of these takes the library's lock: a host that uses one game file from
 * several threads serialises these calls itself.
 */
#define OV_FILE_OPEN 1
#define OV_FILE_IN_BULK 2
#define OV_BULK_ANY 1
#define OV_BULK_WRITE 2

ORVAN_API OvGameFile OvCreateGamefile(const char* path);
ORVAN_API OvGameFile OvOpenGamefile(const char* path);
ORVAN_API int32_t OvCloseGamefile(OvGameFile file);
ORVAN_API int32_t OvGetGamesCount(OvGameFile file);
ORVAN_API int32_t OvFileStatus(OvGameFile file, int32_t reserved);
ORVAN_API int32_t OvStartBulkOperation(OvGameFile file, int32_t mode);
ORVAN_API int32_t OvEndBulkOperation(OvGameFile file);

/*
 * The key database. One database is open per process at a time; it is named by
 * the path of its game file, and keeps its key files in "OvIndex/" beside it.
 *
 * OvOpenDatabase(databasePath, openMode): opens the key database of the game
 * file `databasePath`. `openMode` OV_KEYDB_OPEN_EXISTING (0) opens an existing
 * one; OV_KEYDB_CREATE (1) creates the game file and the key files when
 * missing. The library lends the open database a key cache of 32 entries until
 * OvCloseDatabase. Returns 1 when open; 0 when the key database refuses, when
 * no memory is left for the cache, or when a database is already open (close
 * it first). A failed open leaves nothing behind.
 *
 * OvCloseDatabase(flags): closes the open database and frees its key cache.
 * `flags`: pass 0 (reserved). Returns 1, also when no database is open, which
 * changes nothing.
 *
 * OvDeleteDatabaseFiles(gameFilePath, indexPath, kinds): removes the key files
 * of the game file `gameFilePath` from its index directory `indexPath`.
 * `kinds` is a bit set of OV_KEYFILES_* (1 key tree, 2 game lists, 4 other
 * index files; 7 all). Returns the key database's result: 1 when all asked
 * for are gone, 0 otherwise (the open database's files are refused).
 *
 * OvOptimizeDataBase(level, reserved): optimises the open database. `level`
 * OV_KEYDB_OPTIMIZE_QUICK (0) refreshes its lookup statistics,
 * OV_KEYDB_OPTIMIZE_FULL (1) also drops stale game entries and compacts its
 * files; `reserved`: pass 0. Returns the key database's result, 1 done, 0
 * failed.
 *
 * Threads: opening and closing serialise with each other only, and must not
 * run beside any other key operation.
 */
ORVAN_API int32_t OvOpenDatabase(const char* databasePath, int32_t openMode);
ORVAN_API int32_t OvCloseDatabase(int32_t flags);
ORVAN_API int32_t OvDeleteDatabaseFiles(const char* gameFilePath, const char* indexPath,
                                        int32_t kinds);
ORVAN_API int32_t OvOptimizeDataBase(int32_t level, int32_t reserved);

/*
 * Game buffers and single games.
 *
 * OvAllocGameBuffer(): a new game buffer, empty. Returns 0 when the game store
 * has no memory left, after a "Cannot allocate game buffer" message box.
 * OvFreeGameBuffer(game): frees `game`. Returns 1, also for a buffer that is
 * not allocated.
 *
 * OvReadGame(game, file, number): loads game `number` (from 1) of `file` into
 * `game`, which then stands on the game's initial position and records
 * `number` as its source number. Returns 1, or 0 when the game store refuses
 * (handles not open, `number` out of range); the buffer's recorded source
 * number then stays as it was.
 * OvReadGameHeader(game, file, number): the same for the header alone.
 *
 * OvWriteGame(game, file, out): appends the game in `game` to `file`: through
 * the key database when `file` is a handle of the open database's game file
 * (which also files the game under its keys; `out` is then unused), else
 * through the game store, which stores the new game's number through `out`
 * when it is not null. Returns the new game's number (above 0), or 0 when the
 * game was not stored.
 *
 * OvDeleteGame(file, number) and OvUndeleteGame(file, number): mark game
 * `number` of `file` deleted or no longer deleted, keeping the key database's
 * count of deleted games right for its own game file. Return 1, or 0 when the
 * game store refuses.
 *
 * Threads: OvReadGame, OvReadGameHeader and OvWriteGame serialise on the
 * library's one lock for their access to the game store; a game buffer
 * belongs to one thread at a time.
 */
ORVAN_API OvGameBuffer OvAllocGameBuffer(void);
ORVAN_API int32_t OvFreeGameBuffer(OvGameBuffer game);
ORVAN_API int32_t OvReadGame(OvGameBuffer game, OvGameFile file, int32_t number);
ORVAN_API int32_t OvReadGameHeader(OvGameBuffer game, OvGameFile file, int32_t number);
ORVAN_API int32_t OvWriteGame(OvGameBuffer game, OvGameFile file, int32_t* out);
ORVAN_API int32_t OvDeleteGame(OvGameFile file, int32_t number);
ORVAN_API int32_t OvUndeleteGame(OvGameFile file, int32_t number);

/* ---- walking a game ---- */

/*
 * Walking through the game in a game buffer. The buffer has a current
 * position, which OvPlayMoves and OvGotoMove move; the other operations read
 * without moving it. A freshly read game stands on its initial position. Move
 * words are PackedMove values in the low 16 bits of the result.
 *
 * OvGetInitialPos(game, position): fills `position` with the game's initial
 * position; its en passant square is cleared unless a pawn of the side to
 * move stands beside the pawn that made the double step (on the a- and h-file
 * it stays). `position` may be null to ask for the result alone. Returns 1 for a
 * game from the standard start, 2 for a game from a set-up position, 0 when
 * `game` is not allocated (`position` is then left as it was).
 *
 * OvGetCurrentPos(game, position): fills `position` with the current position,
 * its en passant square as the store has it. Returns 1, or 0 when `position`
 * is null or `game` is not allocated.
 *
 * OvGetMoves(game, moves, maxMoves): stores the moves of the game's main line
 * from its start, at most `maxMoves` of them, into `moves` (room for
 * `maxMoves` entries is the caller's duty). Side lines are not followed.
 * Returns the number stored; 0 for a game without moves, for `maxMoves` 0 or
 * below, or a null `moves`.
 *
 * OvGetNextMove(game): the move that follows the current position, 0 at the
 * end of the line.
 *
 * OvPlayMoves(game, count): plays `count` plies forward along the main
 * continuation, or takes -`count` back when negative, stopping at either end.
 * Returns the number of plies moved: 0 when already at that end, or for a
 * buffer that is not allocated.
 *
 * OvGotoMove(game, ply): goes to the position after `ply` plies of the game;
 * 0 is the initial position, a `ply` beyond the end stops at the end. Returns
 * the number of plies moved, as OvPlayMoves.
 *
 * None of these takes the library's lock; a game buffer belongs to one thread
 * at a time.
 */
ORVAN_API int32_t OvGetInitialPos(OvGameBuffer game, sPosition* position);
ORVAN_API int32_t OvGetCurrentPos(OvGameBuffer game, sPosition* position);
ORVAN_API int32_t OvGetMoves(OvGameBuffer game, PackedMove* moves, int32_t maxMoves);
ORVAN_API int32_t OvGetNextMove(OvGameBuffer game);
ORVAN_API int32_t OvPlayMoves(OvGameBuffer game, int32_t count);
ORVAN_API int32_t OvGotoMove(OvGameBuffer game, int32_t ply);

/* ---- PGN import and export ---- */

/* Read flags of OvPgnImport and OvMemReadPgnGame; other bits have no effect. */
#define OV_PGN_TAGS_ONLY 1     /* headers only: the games are stored without moves */
#define OV_PGN_SWAP_COLOURS 2  /* start position and moves mirrored between the colours */

/*
 * Called by OvPgnImport after each stored game with the number of games
 * stored so far and the `userData` of the call. Return 0 to stop the import,
 * anything else to go on. Runs on the importing thread, inside the call.
 */
typedef int32_t (*PgnProgressCallback)(uint32_t gamesWritten, intptr_t userData);

/*
 * Called by OvExportGames for the number of the next game to export, with the
 * `userData` of the call; 0 ends the export. Games may be named in any order,
 * and more than once. Runs on the exporting thread, inside the call.
 */
typedef int32_t (*NextGameCallback)(intptr_t userData);

/*
 * Reads every game of the PGN file `path` and appends each to the open game
 * file `gameFile`. `pieceLetters`: the letters of knight, bishop, rook, queen
 * and king in the text (the first five characters; null for "NBRQK").
 * `flags`: OV_PGN_* bits. The games are played through the library's own move
 * logic and again through the game store's; a line is cut at an illegal move,
 * and what was read up to there is stored. Text that cannot be placed is
 * skipped and reported to the debug trace. Each stored game is counted and
 * the count given to `progress` (which may be null: the import then runs to
 * the end of the file); the import ends when it returns 0, or when a game
 * cannot be stored. Games stored before a stop stay in the file.
 *
 * Returns 0 when the read ran (to its end or until it was stopped), 1 when
 * `path` is null or cannot be opened, 2 when memory or a game buffer could
 * not be had (nothing is stored then). The count given to `progress` last is
 * the number of games stored. One import runs on one thread; imports on
 * different threads do not meet, and each store takes the library's lock.
 */
ORVAN_API int32_t OvPgnImport(const char* path, OvGameFile gameFile, uint32_t flags,
                              const char* pieceLetters, PgnProgressCallback progress,
                              intptr_t userData);

/*
 * Reads the first game of the PGN text in the movable memory block `text` (see
 * GlobalAlloc) into the game buffer `game`, which is erased first; a game
 * that the reader skips (no moves, a bad FEN) gives way to the next one. The
 * text ends at its first NUL or at the end of the block, whose last byte is
 * then not read. `flags` and `pieceLetters` as for OvPgnImport. Without a game
 * in the text the buffer holds an empty game from the standard start.
 *
 * Returns 0 when the text was read, 1 when `text` is null or no valid block
 * or `game` is 0 (the buffer is then untouched), 2 when memory is short.
 * The block stays the caller's and is not changed.
 */
ORVAN_API int32_t OvMemReadPgnGame(OvGameBuffer game, HGLOBAL text, uint32_t flags,
                                   const char* pieceLetters);

/*
 * Fills the host's record `pgn` from the game in `game`, which must stand on
 * its initial position (as after OvReadGame). `pgn` must have all pointers
 * set: `position`, `moves` (PGN_MAX_MOVES entries), `nags` and
 * `commentIndex` (PGN_MAX_MOVES + 1 entries), `commentText`
 * (PGN_COMMENT_STORE bytes). The tags come in Windows-1252, comments as the
 * store holds them; SetUp and FEN stay empty (`position` holds the start). A
 * line with a move that the library's move logic finds illegal is cut before
 * it, with a debug trace message.
 *
 * Returns 0 on success, 1 when memory for the walk could not be had or `pgn`
 * or one of its pointers is null, 2 when the game exceeds the record's limits
 * (10000 entries in all lines, 750 alternatives pending at one time) or `game`
 * is not open; the record is then unusable. Takes no lock.
 */
ORVAN_API int32_t OvConvertGameToPgn(OvGameBuffer game, PgnGame* pgn);

/*
 * Writes games of the open game file `gamefile` as PGN to the file `path`,
 * which is created or emptied: the game numbers come from `nextGame(userData)`
 * until it returns 0, and each game stands in the file in that order, ending
 * with an empty line. A game that exceeds the record's limits is left out.
 * `flags` has no effect. Returns the number of games written; 0 too when the
 * export could not start (null `path` or `nextGame`, file not creatable, no
 * memory or game buffer), in which case `nextGame` is not called. Write
 * errors on the file are not detected. Takes no lock; the games are loaded
 * without the library's lock, so no other thread may write `gamefile` meanwhile.
 */
ORVAN_API int32_t OvExportGames(const char* path, OvGameFile gamefile, NextGameCallback nextGame,
                                uint32_t flags, intptr_t userData);

/*
 * Makes the PGN text of the game in `game` (standing on its initial position)
 * in a new movable memory block: the text with LF line ends, then a NUL; the
 * block is a multiple of 16384 bytes. `flags` has no effect. The block
 * belongs to the caller, who frees it with GlobalFree; it can be passed to
 * OvMemReadPgnGame unchanged. Returns null when memory is short or the game
 * exceeds the record's limits. Takes no lock.
 */
ORVAN_API HGLOBAL OvCreatePgnGame(OvGameBuffer game, uint32_t flags);

/* ---- header fields ---- */

/*
 * Header field codes: one numbering for OvGetHeaderInfo, OvGetHeaderInfoInt,
 * OvPutHeaderInfo and the sort kinds of the sort indexes. 1 to 22 are single
 * fields, 100 to 103 composites for display; every other code is unknown.
 */
enum {
    HdrPlace = 1,             /* event or tournament, PGN tag Event */
    HdrSite = 2,
    HdrRound = 3,
    HdrAnnotator = 4,
    HdrWhite = 5,
    HdrBlack = 6,
    HdrWhiteCountry = 7,
    HdrBlackCountry = 8,
    HdrWhiteElo = 9,
    HdrBlackElo = 10,
    HdrWhiteTitle = 11,
    HdrBlackTitle = 12,
    HdrWhiteTime = 13,        /* minutes, shown as hours:minutes */
    HdrBlackTime = 14,
    HdrKeycode = 15,          /* opening key code, PGN tag ECO */
    HdrResult = 16,
    HdrDate = 17,
    HdrRemark = 18,
    HdrSourceLoadnumber = 19, /* number of the game in the file it was loaded from */
    HdrMoves = 20,            /* full moves of the main line */
    HdrStatus = 21,
    HdrResultShort = 22,
    HdrPlayers = 100,         /* "White - Black" */
    HdrPlayersFull = 101,     /* both player descriptions, " - " between them */
    HdrWhiteFull = 102,       /* "Name (country, Elo, title)", present items only */
    HdrBlackFull = 103
};

/* Bits of OvGetHeaderInfoInt(game, HdrStatus, ...); the letters of the text
 * form stand in the order A, D, P, V. */
#define OV_STATUS_DELETED 1     /* D: marked deleted */
#define OV_STATUS_SETUP 2       /* P: starts from a set-up position */
#define OV_STATUS_ANNOTATED 4   /* A: carries comments or glyphs */
#define OV_STATUS_VARIATIONS 8  /* V: holds variations */

/*
 * Delivers header field `field` of the game in `game` as display text in
 * `text`, a buffer of `textSize` bytes, translated to Windows-1252 and cut to
 * textSize - 1 characters. Stored texts come as they are; Round and Elo as
 * decimal numbers when 1 or more; times as "h:mm" when above 0 and below
 * 6000 minutes; HdrResult as "1-0", "0-1", "\xBD-\xBD" or the empty text;
 * HdrResultShort as "1-0", "0-1", "1/2" or "*"; HdrDate in the user's short
 * date form with only the known parts; HdrSourceLoadnumber and HdrMoves as
 * decimal numbers, always; HdrStatus as the letters of the set flags.
 *
 * Returns 1 when the field was delivered (also as the empty text), 0 for an
 * unknown code, a field without value (Round or Elo below 1, time out of
 * range), a null `text` or a game buffer that is not open. With textSize of
 * 1 or more `text` is terminated afterwards, empty when the result is 0; a
 * textSize of 0 or below writes nothing. Takes no lock; calls on different
 * game buffers may run on different threads.
 */
ORVAN_API int32_t OvGetHeaderInfo(OvGameBuffer game, int32_t field, char* text, int32_t textSize);

/*
 * Delivers the number of header field `field` through `value` (which may be
 * null) for six codes, and returns 1: HdrWhiteElo and HdrBlackElo as stored;
 * HdrResult in PGN order (0 none, 1 White wins, 2 Black wins, 3 draw);
 * HdrDate packed as year << 16 | month << 8 | day (a month above 12 as 0),
 * so that the numbers order dates; HdrSourceLoadnumber; HdrStatus as
 * OV_STATUS_* bits. Every other code returns 0 and leaves `value` alone. No
 * formatting, no translation, no lock.
 */
ORVAN_API int32_t OvGetHeaderInfoInt(OvGameBuffer game, int32_t field, int32_t* value);

/*
 * Stores `text` (Windows-1252, terminated) as header field `field` of the
 * game in `game`, translated to code page 437 and cut to 255 characters.
 * Settable: HdrPlace, HdrSite, HdrAnnotator, HdrWhite, HdrBlack,
 * HdrWhiteCountry, HdrBlackCountry, HdrWhiteTitle, HdrBlackTitle, HdrKeycode,
 * HdrRemark; a null `text` stores the empty text. Returns 1, or 0 for any
 * other code (the game is then unchanged) and for a game buffer that is not
 * open. The change stays in the game buffer until the game is written. Takes
 * no lock.
 */
ORVAN_API int32_t OvPutHeaderInfo(OvGameBuffer game, int32_t field, const char* text);

/* ---- query and search ---- */

/*
 * The query: one record describes every search of a game file.
 *
 * `kind` says what is searched (Query* below). For QueryHeader, `conditions`
 * holds up to 3 groups of up to 5 conditions: a game is a hit when it
 * satisfies every condition of at least one group. conditions[row][group]:
 * the second index is the group, so the groups interleave in memory.
 * `includeDeleted` 0 leaves games marked deleted out of header and position
 * searches; any other value ignores the mark. `key` is read by QueryKeyGames
 * and QueryKeyMoves, `position` by QueryPosition and QueryKeyMoves.
 */
enum {
    QueryHeader = 1,   /* header search over `conditions` */
    QueryKeyGames = 2, /* the games filed under `key` */
    QueryPosition = 4, /* games that reach `position`; an empty board: header search, no conditions */
    QueryKeyMoves = 16 /* games under `key` that reach `position`, each wound to it */
};

/* Field codes of a condition (not the Hdr* codes). Form in brackets: how the
 * value text is read. Every other non-zero code matches no game. */
enum {
    QfPlayer = 1,        /* [text] either player */
    QfCountry = 2,       /* [text] either player's country */
    QfElo = 3,           /* [number] either player's Elo */
    QfTitle = 4,         /* [text] either player's title */
    QfKeycode = 5,       /* [text] opening key code */
    QfResult = 6,        /* [result] "1-0", "0-1", "1/2", anything else: no result */
    QfMoves = 7,         /* [number] full moves of the main line */
    QfPlace = 8,         /* [text] event */
    QfSite = 9,          /* [text] */
    QfRound = 10,        /* [number] */
    QfDate = 11,         /* [date] free form: "1997", "5.1997", "12 May 1997", ... */
    QfLoadnumber = 12,   /* [number] the game's number in the searched file */
    QfAnnotator = 13,    /* [text] */
    QfRemark = 14,       /* [text] */
    QfWhite = 15,        /* [text] */
    QfBlack = 16,        /* [text] */
    QfWhiteCountry = 17, /* [text] */
    QfBlackCountry = 18, /* [text] */
    QfWhiteElo = 19,     /* [number] */
    QfBlackElo = 20,     /* [number] */
    QfWhiteTitle = 21,   /* [text] */
    QfBlackTitle = 22    /* [text] */
};

/*
 * Operator codes of a condition. For text fields: as named, Latin letters
 * without regard to case. For number and date fields, with the game's value
 * on the left: 1 =, 2 !=, 3 <, 4 >=, 5 <=, 6 >; a date query without day
 * (or month) ignores the game's day (or month). For QfResult: 1, 3, 5 "is",
 * 2, 4, 6 "is not". For fields of either player, odd text codes ask that one
 * player fits and even ones that neither does, while number codes hold when
 * one player's number fits. Any other code drops the condition.
 */
enum {
    QopEquals = 1,
    QopNotEquals = 2,
    QopBeginsWith = 3,    /* numbers: game below query */
    QopNotBeginsWith = 4, /* numbers: game not below query */
    QopContains = 5,      /* numbers: game not above query */
    QopNotContains = 6    /* numbers: game above query */
};

#define OV_QUERY_VALUE_SIZE 64
#define OV_QUERY_ROWS 5
#define OV_QUERY_GROUPS 3

/*
 * One condition. `field` 0 leaves the slot unused. `value` is a terminated
 * Windows-1252 text of at most 63 characters, also for numbers, dates and
 * results. A condition is dropped (as if unused) when `op` is out of 1 to 6,
 * or when its text is empty and `op` is 3 to 6, or when a number or date
 * reads as 0 and `op` is 3.
 */
typedef struct sQueryCondition {
    int32_t field;
    int32_t op;
    char value[OV_QUERY_VALUE_SIZE];
} sQueryCondition;
ORVAN_STATIC_ASSERT(sizeof(sQueryCondition) == 72, "sQueryCondition is 72 bytes");

typedef struct sQuery {
    uint32_t kind;
    int32_t includeDeleted;
    int32_t key;
    sPosition position;
    sQueryCondition conditions[OV_QUERY_ROWS][OV_QUERY_GROUPS];
} sQuery;
ORVAN_STATIC_ASSERT(offsetof(sQuery, key) == 8, "sQuery layout");
ORVAN_STATIC_ASSERT(offsetof(sQuery, position) == 12, "sQuery layout");
ORVAN_STATIC_ASSERT(offsetof(sQuery, conditions) == 84, "sQuery layout");
ORVAN_STATIC_ASSERT(sizeof(sQuery) == 84 + 15 * 72, "sQuery is 1164 bytes");

/*
 * OvIsEmptyQuery(query): 1 when `query` selects nothing to search for, else
 * 0. Kinds 2 and 16 are never empty; kind 4 is empty when its board is all
 * zero and `includeDeleted` is not 0; kind 1 is empty when `includeDeleted`
 * is not 0 and no used condition has a non-empty text or op 1 or 2; every
 * other kind is empty. Looks at the raw record only, so a condition that the
 * search would drop can still make a query count as not empty. A null
 * `query` is empty. Writes nothing, takes no lock.
 */
ORVAN_API int32_t OvIsEmptyQuery(const sQuery* query);

/*
 * The host's search callback, for every search below. Calls of one search,
 * in order: the start call (0, 0, total, user); a hit call (game, number,
 * total, user) for each hit, where `game` is a game buffer holding the game,
 * valid during the call only (1 in key game searches, where no game is
 * read); progress calls (0, number of the game just tested, total, user) in
 * header and position searches, at most once a second and only while no hit
 * comes; and the end call (0, total, total, user), also after a stop. A
 * result of 0 from a hit or progress call stops the search; the results of
 * the start and end calls are not looked at. `total` is the file's game
 * count at the start, deleted games included. `user` is the search's `user`.
 */
typedef int32_t (*SearchCallback)(uint32_t game, int32_t number, int32_t total, intptr_t user);

/*
 * OvSearchGameHdrs(file, query, callback, user): runs the search `query`
 * describes on `file` and reports through `callback`. Kind 2 runs
 * OvSearchKeyGames, kind 4 with a non-empty board OvSearchPosGames, kind 16
 * OvSearchKeyMoves; every other kind a header search: each game's header is
 * tested against the conditions, in file order, and a hit's game buffer
 * holds the header with the game's number as its source number. A header
 * search whose conditions are all dropped hits every game not deleted when
 * `includeDeleted` is 0, and no game otherwise.
 *
 * Returns 0 in every case. A null `query` or `callback` makes no call. When
 * no game buffer or working memory is left (after a message box for the
 * game buffer), the header search makes the end call alone, (0, 0, 0, user);
 * a file that is not open is searched as empty.
 *
 * Threads: the header and position searches hold the library's lock only
 * while they read a batch of games, never during a callback, so other
 * threads may read and write games meanwhile. The key searches hold it for
 * the whole walk over the key's games, callbacks included; a callback may
 * call the library on the same thread. Searches on different threads do not
 * disturb each other.
 */
ORVAN_API int32_t OvSearchGameHdrs(OvGameFile file, const sQuery* query, SearchCallback callback,
                                   intptr_t user);

#ifdef __cplusplus
} /* extern "C" */

/*
 * The three searches behind OvSearchGameHdrs, with C++ linkage; a C host
 * reaches them through OvSearchGameHdrs with kinds 2, 4 and 16. Each returns
 * 0, reports through `callback` as above, and makes no call for a null
 * `callback` or `position`.
 *
 * OvSearchPosGames(file, position, includeDeleted, callback, user): every
 * game of `file` in which `position` occurs, in any line. The position's
 * castling and en passant fields count only as far as they can be so: an en
 * passant square where no capture is possible is ignored. `position` is not
 * changed. The hit's game buffer holds the whole game.
 *
 * OvSearchKeyGames(file, key, callback, user): every game the open key
 * database files under `key`, in its order; `game` of a hit call is 1 and no
 * game is read. No progress calls.
 *
 * OvSearchKeyMoves(file, key, position, callback, user): every game under
 * `key` whose main line reaches `position` exactly as given (en passant
 * square included); the hit's game buffer holds the whole game, standing on
 * the first position of the main line that equals `position`. No progress
 * calls.
 *
 * When no game buffer or working memory is left, the position searches make
 * the start and the end call only.
 */
ORVAN_API int32_t OvSearchPosGames(OvGameFile file, const sPosition* position, int32_t includeDeleted,
                                   SearchCallback callback, intptr_t user);
ORVAN_API int32_t OvSearchKeyGames(OvGameFile file, int32_t key, SearchCallback callback, intptr_t user);
ORVAN_API int32_t OvSearchKeyMoves(OvGameFile file, int32_t key, const sPosition* position,
                                   SearchCallback callback, intptr_t user);

extern "C" {
#endif

/* ---- keys and classification ---- */

/*
 * Values the host passes through to the key database.
 *
 * Opening (the mode of OvOpenDatabase): the database is named by the path of
 * its game file; its key files live in the directory OvIndex/ beside it.
 */
#define OV_KEYDB_OPEN_EXISTING 0 /* open a database that exists */
#define OV_KEYDB_CREATE 1        /* create the game file and key files when missing */

/* Kinds of key files, a bit set (OvDeleteDatabaseFiles). */
#define OV_KEYFILES_TREE 1  /* the key tree of the game file */
#define OV_KEYFILES_LISTS 2 /* the lists of games filed under keys */
#define OV_KEYFILES_INDEX 4 /* every other index file kept for the game file */
#define OV_KEYFILES_ALL 7

/* Levels of OvOptimizeDataBase. */
#define OV_KEYDB_OPTIMIZE_QUICK 0 /* refresh the lookup statistics */
#define OV_KEYDB_OPTIMIZE_FULL 1  /* also drop stale game entries and compact the files */

/*
 * Orders of key iteration, the second argument of OvGetFirstKey, OvGetNextKey
 * and OvGetPrevKey. The first argument is a key: for OvGetFirstKey the parent
 * whose first child is wanted (0 = the first root key), for the others the
 * key to step from. Siblings are ordered by key code, then by key number. The
 * result is a key, 0 at either end or for a key the database does not have.
 */
#define OV_KEYORDER_TREE 0    /* the whole tree depth first: a key, then its children */
#define OV_KEYORDER_SIBLING 1 /* the keys of one parent only */
#define OV_KEYORDER_CODE 2    /* all keys by key code, then key number; first ignores the parent */

/*
 * The argument of OvGetKeyMove: 0 gives the last move of the key's line (the
 * move into the key's position), n >= 1 its n-th half-move from the start
 * position. The result is a PackedMove, 0 when there is no such move.
 */
#define OV_KEYMOVE_LAST 0

/*
 * What the key database keeps about one key, besides its texts: the `data`
 * part of sKeyInfo. All fields are 0 for a key the database does not have.
 */
typedef struct sKeyData {
    int32_t key;          /* the key itself */
    int32_t parent;       /* the parent key, 0 for a root key */
    int32_t level;        /* number of keys above it, 0 for a root key */
    int32_t ply;          /* half-moves of the key's line from the start position */
    int32_t childCount;   /* keys directly below it */
    int32_t gameCount;    /* games filed under the key itself */
    int32_t subtreeGames; /* games filed under the key and all keys below it */
    int32_t reserved;     /* 0 */
} sKeyData;
ORVAN_STATIC_ASSERT(sizeof(sKeyData) == 32, "sKeyData is 32 bytes");

#define OV_KEY_TEXT_SIZE 256

/*
 * Filled by OvGetKeyInfo: the key's texts in the host's code page and what
 * the key database keeps about it. `firstWord` is not written.
 */
typedef struct sKeyInfo {
    int32_t firstWord;
    char keycode[OV_KEY_TEXT_SIZE]; /* e.g. "B90" */
    char name[OV_KEY_TEXT_SIZE];    /* e.g. "Sicilian: Najdorf" */
    char remark[OV_KEY_TEXT_SIZE];
    sKeyData data;
} sKeyInfo;
ORVAN_STATIC_ASSERT(sizeof(sKeyInfo) == 4 + 3 * 256 + 32, "sKeyInfo layout");
ORVAN_STATIC_ASSERT(offsetof(sKeyInfo, data) == 772, "sKeyInfo layout");

/* Moves of a key's line a view line holds; a longer line keeps its first ones. */
#define OV_KEYVIEW_MOVES 670
/* Lines of one key view. */
#define OV_KEYVIEW_LINES 20

/*
 * One line of a key view, 1900 bytes, as OvGetKeyView fills it: one key with
 * its line of moves, and how it stands to the line above it (the previous
 * line), so that a host can indent a tree and print only the moves that
 * differ. Texts are the key database's own, in code page 437. A key of 0
 * gives an all-zero line.
 */
typedef struct sKeyViewLine {
    int32_t key;
    int32_t parent;            /* parent key, 0 for a root key */
    int32_t level;             /* keys above it, 0 for a root key */
    int32_t childCount;        /* keys directly below it */
    int32_t gameCount;         /* games filed under the key itself */
    int32_t moveCount;         /* half-moves of the key's line (moves holds the first
                                  OV_KEYVIEW_MOVES of them) */
    int32_t sharedMoves;       /* leading moves equal to those of the previous line */
    int32_t relation;          /* OV_KEYVIEW_* below */
    char keycode[16];
    char name[OV_KEY_TEXT_SIZE];
    char remark[OV_KEY_TEXT_SIZE];
    PackedMove moves[OV_KEYVIEW_MOVES]; /* the key's line from the start position */
} sKeyViewLine;
ORVAN_STATIC_ASSERT(sizeof(sKeyViewLine) == 1900, "sKeyViewLine is 1900 bytes");
ORVAN_STATIC_ASSERT(offsetof(sKeyViewLine, moves) == 560, "sKeyViewLine layout");

/* sKeyViewLine.relation: how the key stands to the key of the previous line. */
#define OV_KEYVIEW_UNRELATED 0 /* no previous key, or none of the below */
#define OV_KEYVIEW_CHILD 1     /* a child of the previous key */
#define OV_KEYVIEW_SIBLING 2   /* same parent as the previous key */
#define OV_KEYVIEW_SAME 3      /* the previous key itself */

/*
 * Browsing the key database. None of these takes the library's lock; they
 * run beside a key search on another thread. Without an open database each
 * gives its failure result.
 *
 * OvGetFirstKey(parent, order), OvGetNextKey(key, order),
 * OvGetPrevKey(key, order): step through the keys in one of the
 * OV_KEYORDER_* orders (see above). Return a key, 0 at either end.
 *
 * OvGetKeyMove(key, which): a move of the key's line (see OV_KEYMOVE_LAST).
 * Returns the PackedMove, 0 when there is none.
 *
 * OvGetKeyPosition(key, position): fills `position` with the key's position
 * (an empty board for a key the database does not have). Returns 1; 0 when
 * `position` is null, or when an en passant square that no double step can
 * have left had to be cleared.
 *
 * OvGetKeyInfo(key, info): fills the texts of `info` in the host's code page
 * (each terminated within its 256 bytes) and its `data`; `firstWord` is left
 * as the caller set it. Returns 1, 0 for an unknown key (empty texts, zero
 * data) or a null `info`.
 *
 * OvGetChildKeys(key, keys, size): stores the keys directly below `key`, at
 * most `size` of them, into `keys`. Returns their number; 0 for none (then
 * `keys` is untouched), -1 for an unknown key.
 *
 * OvGetKeyGames(key, games, size): stores the numbers of the games filed
 * under `key` itself, ascending, at most `size` of them. Returns their
 * number, -1 for an unknown key.
 *
 * OvGetKeyView(reserved1, keys, lines, reserved2, count): fills `lines[i]`
 * for `keys[i]`, i from 0 to `count` - 1, each line related to the one above
 * it; a key of 0 gives an all-zero line. At most OV_KEYVIEW_LINES lines are
 * filled; the rest of `lines` is untouched. The reserved arguments are not
 * read. Returns 1; 0 when `keys` or `lines` is null while `count` is above 0.
 */
ORVAN_API int32_t OvGetFirstKey(int32_t parent, int32_t order);
ORVAN_API int32_t OvGetNextKey(int32_t key, int32_t order);
ORVAN_API int32_t OvGetPrevKey(int32_t key, int32_t order);
ORVAN_API int32_t OvGetKeyMove(int32_t key, int32_t which);
ORVAN_API int32_t OvGetKeyPosition(int32_t key, sPosition* position);
ORVAN_API int32_t OvGetKeyInfo(int32_t key, sKeyInfo* info);
ORVAN_API int32_t OvGetChildKeys(int32_t key, int32_t* keys, int32_t size);
ORVAN_API int32_t OvGetKeyGames(int32_t key, int32_t* games, int32_t size);
ORVAN_API int32_t OvGetKeyView(int32_t reserved1, const int32_t* keys, sKeyViewLine* lines,
                               int32_t reserved2, int32_t count);

/*
 * Classifying games against the open key database. The game buffer belongs
 * to the calling thread; no lock is taken. Without a database nothing is
 * found and the results are 0.
 *
 * OvClassifyPosition(game): the key of the game's current position, 0 when
 * the database has none. The game does not move.
 *
 * OvClassifyGame(game, maxPly, reachedPly): the key of the deepest position
 * of the game's main line, no more than `maxPly` half-moves into it (and no
 * deeper than the key tree reaches), that the database knows; 0 when it
 * knows none. The game is left on that position (on its initial position
 * when none is known), and the number of half-moves played to it is stored
 * through `reachedPly` unless that is null. A game that stays inside the key
 * tree costs one lookup.
 *
 * OvClassifyMoves(game, keys, count): sets `keys[i]` to the key of the
 * position after i half-moves of the main line (0 where there is none), for
 * as many positions as the game, `count` and the key tree's depth allow;
 * the other places of the `count` are 0. Returns the number of places up to
 * and including the last one with a key, at least 1 when a position was
 * looked at; 0 for `count` 0, a null `keys`, or a game from a set-up
 * position (then the game does not move). The game is left on the last
 * position looked at, or one behind it.
 */
ORVAN_API int32_t OvClassifyPosition(OvGameBuffer game);
ORVAN_API int32_t OvClassifyGame(OvGameBuffer game, int32_t maxPly, int32_t* reachedPly);
ORVAN_API int32_t OvClassifyMoves(OvGameBuffer game, int32_t* keys, int32_t count);

/* ---- sort indexes ---- */

/*
 * Sort indexes of a game file, kept as files in a directory the host names.
 * None of these takes the library's lock; the game store serialises them
 * with the other calls on the same file.
 *
 * OvIndexCreateUpdate(file, directory, codes, reserved1, reserved2,
 * reserved3, reserved4): makes `directory` if it does not exist (its parent
 * must), then writes an index file there for each sort wanted: `codes` is a
 * bit set of the store's sort codes (bit n - 1 for code n, 1 to 19; 0 = all)
 * and the reserved arguments are 0. Later sorts of the file take the keys of
 * the games they cover from these files. Returns the number of index files
 * written; 0 when `directory` is null, when it cannot be made (a message box
 * then shows the system's text under the title "Error <number>"), or when
 * the store fails (bad handle, bad `codes`, unwritable directory).
 *
 * OvIndexDelete(file, kind, directory): removes the index of the status
 * flags (kind HdrStatus) of `file` from `directory`. Returns 0 when removed,
 * -1 for any other kind or when there was none to remove.
 *
 * OvIndexSort(file, numbers, firstGame, skipDeleted, count, kind, order):
 * stores into `numbers` (an int32_t array with room for `count`, passed as
 * a value) the numbers of the games from `firstGame` on (1 or below: from
 * the first), without the deleted ones when `skipDeleted` is not 0, ordered
 * by the header field `kind` (one of the Hdr* codes; HdrPlayers,
 * HdrPlayersFull and HdrWhiteFull sort as HdrWhite, HdrBlackFull as
 * HdrBlack); `order` not 0 sorts ascending, 0 descending. Equal fields stay
 * in game order. Texts sort by their bytes in the store's code page, the
 * empty text first; the date as year, month, day with unknown parts as 0;
 * the result as none, 1-0, draw, 0-1; HdrMoves by full moves; HdrStatus by
 * its number (OV_STATUS_* bits). Returns an OV_SORT_* code: sorted when at
 * least `count` games are in order (only the first `count` are stored).
 */
#define OV_SORT_DONE 0          /* sorted */
#define OV_SORT_UNKNOWN_KIND 1  /* `kind` is no sort kind */
#define OV_SORT_NOT_SORTABLE 2  /* `kind` is a field that cannot be sorted by (the times) */
#define OV_SORT_NO_GAMES 3      /* no game to sort */
#define OV_SORT_FAILED 4        /* fewer games than `count`, or the store failed */

ORVAN_API int32_t OvIndexCreateUpdate(OvGameFile file, const char* directory, intptr_t codes,
                                      intptr_t reserved1, intptr_t reserved2,
                                      intptr_t reserved3, intptr_t reserved4);
ORVAN_API int32_t OvIndexDelete(OvGameFile file, int32_t kind, const char* directory);
ORVAN_API int32_t OvIndexSort(OvGameFile file, intptr_t numbers, intptr_t firstGame,
                              intptr_t skipDeleted, int32_t count, int32_t kind, int32_t order);

#ifdef __cplusplus
} /* extern "C" */
#endif

#endif /* ORVAN_H */
