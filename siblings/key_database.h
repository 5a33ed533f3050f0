// The key database contract: the calls liborvan makes into libovkey.so.
// One database is open per process, so most calls name none. Key texts are in
// code page 437 and fit 256 bytes. A key is a signed 32-bit number, 0 = none.
//
// A database is named by the path of its game file (a game file of the game
// store); its key files live in the directory OvIndex/ beside that file. Every
// call below is safe without an open database, with null pointers and with keys
// the database does not have: it then gives its failure result.
#ifndef ORVAN_SIBLINGS_KEY_DATABASE_H
#define ORVAN_SIBLINGS_KEY_DATABASE_H

#include <cstdint>

#include "orvan.h"
#include "siblings/driver_records.h"

#define OVKEY_API __attribute__((visibility("default")))

extern "C" {

// Called for each game of a key by DbsCBSearchKey with the game's number in
// the database's game file (from 1); a result of 0 ends the iteration.
typedef int32_t (*DbsGameVisitor)(int32_t number);

// Bytes of one entry of the key cache block given to DbsKeyCacheOn.
#define OVK_CACHE_ENTRY_SIZE 2180

// What DbsSearchKey and DbsCBSearchKey deliver (their second argument).
#define OVK_SEARCH_CHILDREN 1  // child keys, each negated
#define OVK_SEARCH_GAMES 2     // game numbers, ascending
// Their third argument: which keys count.
#define OVK_SCOPE_KEY 1      // the key itself
#define OVK_SCOPE_SUBTREE 2  // the key and every key below it

// Results of IDOpenBase.
#define OVK_OPEN_OK 0
#define OVK_OPEN_BAD_ARGUMENT 1  // null or empty path, unknown mode, reserved not 0
#define OVK_OPEN_MISSING 2       // mode 0 and the game file or key files do not exist
#define OVK_OPEN_FAILED 3        // a file could not be opened, created or is no key database
#define OVK_OPEN_BUSY 4          // a database is open already

// ---- Version and life ----

// Stores the version word through `version` (and 0 through `second` when not
// null). Result 0 is a failure.
OVKEY_API int32_t OvkGetVersion(uint32_t* version, uint32_t* second);

// Opens the database of the game file `databasePath`: `openMode` 0
// (OV_KEYDB_OPEN_EXISTING) opens an existing one, 1 (OV_KEYDB_CREATE) creates
// the game file, the directory OvIndex/ and the key files when missing;
// `reserved` is 0. Result 0 (OVK_OPEN_OK) means open, else an OVK_OPEN_* code.
OVKEY_API int32_t IDOpenBase(const char* databasePath, int32_t openMode, int32_t reserved);

// Closes the open database; `flags` is 0 (reserved). Result 1, 0 when none was open.
OVKEY_API int32_t IDCloseBase(int32_t flags);

// Lends the database `block` of `entries` * OVK_CACHE_ENTRY_SIZE zeroed bytes
// as a cache of key records, held until DbsKeyCacheOff. Result 1, 0 when
// refused (no database, null block, entries below 1).
OVKEY_API int32_t DbsKeyCacheOn(void* block, int32_t entries);

// Stops using the cache block; the caller may free it after this call. Result 1.
OVKEY_API int32_t DbsKeyCacheOff(void);

// ---- Files ----

// Removes the key files of the game file `gameFilePath` kept in the directory
// `indexPath` (its OvIndex/ directory, with or without the trailing slash):
// `kinds` is a bit set of OV_KEYFILES_* (1 key tree, 2 game lists, 4 every
// other index file named after the game file; 7 all). Files that do not exist
// count as removed. The files of the open database are refused. Result 1 when
// all asked for are gone, 0 otherwise.
OVKEY_API int32_t OvkDeleteDatabaseFiles(const char* gameFilePath, const char* indexPath,
                                         int32_t kinds);

// Optimises the open database: the first three arguments are 0, 0, 1 (the
// open database); `level` 0 (OV_KEYDB_OPTIMIZE_QUICK) refreshes the lookup
// statistics, 1 (OV_KEYDB_OPTIMIZE_FULL) also drops game entries beyond the
// game file's count and compacts the key files; `reserved` is 0. Result 1
// done, 0 failed.
OVKEY_API int32_t OvkOptimizeDatabase(int32_t first, int32_t second, int32_t target,
                                      int32_t level, int32_t reserved);

// Not 0 when `file` is an open game file handle of the open database's game file.
OVKEY_API int32_t IDIsDatabaseGamefile(uint32_t file);

// The status of the open database in the bits of IGFileStatus: 1 open, 2 in a
// run of writes or reads (a transaction of the key files), 4 deleted games
// counted. `a` is 0 for all bits, else a mask as in IGFileStatus. 0 without
// open database.
OVKEY_API int32_t DbsFileStatus(int32_t a);

// Counts `count` more deleted games in the database's game file (negative for
// undeleted ones). Result 1, 0 without open database.
OVKEY_API int32_t DbsAdjustDeletedGames(int32_t count);

// Stores the game of buffer `game` in the database's game file through the
// game file handle `file` (one of IDIsDatabaseGamefile; any other is refused),
// and files it under the deepest key its main line reaches within
// DbsGetDatabaseDepth positions (none for a game from a set-up position).
// During a bulk operation on `file` the game is listed once it has ended. The
// next three arguments are 0, 0, 1. The buffer is left rewound. Result: the
// game's number in the file (above 0), 0 when it was not stored.
OVKEY_API int32_t OvkSaveToDatabase(uint32_t game, uint32_t file, int32_t reserved1,
                                    int32_t reserved2, int32_t mode);

// ---- Positions ----

// How many positions from a game's start the keys cover: the highest useful
// IGGameGetCM (1 + the longest key line in half-moves); 0 without keys.
OVKEY_API int32_t DbsGetDatabaseDepth(void);

// Looks `board` up (squares, side to move, castling flags and a usable en
// passant file). Not 0 if found, and then sets `*key` (the lowest key of that
// position); `*key` is left alone otherwise.
OVKEY_API int32_t OvkFindPosition(const BoardRecord* board, int32_t* key);

// Fills `board` with the key's position (ply = half-moves of its line + 1).
// Result 1, 0 for an unknown key, when `board` is zeroed.
OVKEY_API int32_t OvkGetKeyPosition(int32_t key, BoardRecord* board);

// A move of the key's line: `reserved` 0; `which` 0 (OV_KEYMOVE_LAST) the last
// one, n >= 1 the n-th half-move. Result the PackedMove, 0 when none.
OVKEY_API int32_t DbsGetKeyMove(int32_t key, int32_t reserved, int32_t which);

// ---- Iteration (orders OV_KEYORDER_*) ----

// The first child of `parent` (0 = the first root key) in `order`; in
// OV_KEYORDER_CODE the first key of all. Result the key, 0 when none.
OVKEY_API int32_t OvkGetFirstKey(int32_t parent, int32_t order);
// The key after `key` in `order`. Result the key, 0 at the end or for an unknown key.
OVKEY_API int32_t OvkGetNextKey(int32_t key, int32_t order);
// The key before `key` in `order`. Result the key, 0 at the start or for an unknown key.
OVKEY_API int32_t OvkGetPreviousKey(int32_t key, int32_t order);

// ---- Children and games ----

// Writes at most `size` places of `array`: with `what` 1 the child keys (in
// sibling order, each negated), with `what` 2 the numbers of the games filed
// under them (ascending, not negated); `scope` OVK_SCOPE_KEY or
// OVK_SCOPE_SUBTREE. Result the count written, -1 for an unknown key, a bad
// argument or no open database.
OVKEY_API int32_t DbsSearchKey(int32_t key, int32_t what, int32_t scope, int32_t* array,
                               int32_t size);

// Calls `visitor(number)` for each game filed under the key when the call
// begins (`what` 2, `scope` as in DbsSearchKey), in ascending order, until it
// gives 0. The visitor may call into the key database, even close it (the
// iteration then ends). Result the number of calls made, -1 on failure as in
// DbsSearchKey.
OVKEY_API int32_t DbsCBSearchKey(int32_t key, int32_t what, int32_t scope,
                                 DbsGameVisitor visitor);

// ---- Texts and records ----

// Write the key's code (e.g. "B90") or remark into `text` of 256 bytes,
// terminated. Result 1, 0 for an unknown key (then an empty text).
OVKEY_API int32_t DbsGetKeycode(int32_t key, char* text);
OVKEY_API int32_t DbsGetRemark(int32_t key, char* text);

// Writes the key's name into `text` of `size` bytes, terminated and cut;
// `reserved` 0. Result 1, 0 for an unknown key (then an empty text).
OVKEY_API int32_t OvkGetKeyName(int32_t key, char* text, int32_t reserved, int32_t size);

// Fills `record` (sKeyData of orvan.h). Result 1, 0 for an unknown key (then
// all zero).
OVKEY_API int32_t DbsGetKeyDataInfo(int32_t key, sKeyData* record);

// `action` 1 opens a run of DbsGetHorViewLine calls (one consistent read of
// the database), 0 ends it. Result 1, 0 without open database.
OVKEY_API int32_t OvkFileAction(int32_t action);

// Fills `line` (sKeyViewLine of orvan.h, 1900 bytes) for `key`, relating it
// to `previous` (the line above, all zero or null for none). Result 1, 0 for
// an unknown key (then `line` all zero).
OVKEY_API int32_t DbsGetHorViewLine(int32_t key, sKeyViewLine* line,
                                    const sKeyViewLine* previous);

}  // extern "C"

#endif
