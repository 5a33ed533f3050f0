// The steps of the two import operations, OvPgnImport and OvMemReadPgnGame.
#ifndef ORVAN_PGN_READ_IMPORT_DRIVERS_H
#define ORVAN_PGN_READ_IMPORT_DRIVERS_H

#include <cstdint>

#include "orvan.h"

// What the import's game callback works with.
struct PgnImportContext {
    OvGameFile gameFile;
    OvGameBuffer gameBuffer;  // the one buffer that all games pass through
    uint32_t gamesWritten;
    PgnProgressCallback progress;  // may be null: the import goes on
    intptr_t userData;
};

// The game callback of OvPgnImport: builds the record into the context's
// buffer and stores it. Returns 0 to stop the read (the store failed or the
// host's progress said so), else 1.
int32_t PgnImportStoreGame(PgnGame* game, int32_t hasComment, int32_t movesRead, intptr_t context);

// Reads the first game of the text in `text` into `game`. False, with the
// record as it was, when `text` is no valid block.
bool PgnReadMemory(PgnGame* game, HGLOBAL text, uint32_t flags, const char* pieceLetters);

#endif
