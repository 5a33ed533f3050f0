// OvPgnImport and OvMemReadPgnGame: PGN text into stored games and game buffers.
#include "pgn/read/import_drivers.h"

#include <algorithm>
#include <cstdio>
#include <memory>

#include "chess/position.h"
#include "pgn/pgn_game.h"
#include "pgn/read/game_builder.h"
#include "frame/owned_game_buffer.h"
#include "pgn/read/pgn_read.h"

namespace {

enum ImportResult : int32_t { ImportDone = 0, ImportNoInput = 1, ImportNoMemory = 2 };

struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

// The record of a read. The reader sets the start position only for a game
// it finishes; for a text without one (or a tags-only read) the standard
// start stands, so that the builder leaves the game's start alone.
void PrepareRecord(PgnGame* game)
{
    *game->position = StartPosition;
}

}  // namespace

int32_t PgnImportStoreGame(PgnGame* game, int32_t, int32_t, intptr_t context)
{
    auto& import = *reinterpret_cast<PgnImportContext*>(context);
    BuildPgnGame(*game, import.gameBuffer);
    int32_t number = 0;
    if (OvWriteGame(import.gameBuffer, import.gameFile, &number) == 0)
        return 0;
    ++import.gamesWritten;
    if (import.progress == nullptr)
        return 1;
    return import.progress(import.gamesWritten, import.userData) != 0 ? 1 : 0;
}

bool PgnReadMemory(PgnGame* game, HGLOBAL text, uint32_t flags, const char* pieceLetters)
{
    const auto* data = static_cast<const char*>(GlobalLock(text));
    if (data == nullptr)
        return false;
    PgnSource source;
    source.text = data;
    source.size = static_cast<int32_t>(std::min<size_t>(GlobalSize(text), INT32_MAX));
    PgnReadGames(source, game, flags, pieceLetters, nullptr, 0);
    GlobalUnlock(text);
    return true;
}

extern "C" ORVAN_API int32_t OvPgnImport(const char* path, OvGameFile gameFile, uint32_t flags,
                                         const char* pieceLetters, PgnProgressCallback progress,
                                         intptr_t userData)
{
    PgnGameStorage storage;
    if (!storage.Allocated())
        return ImportNoMemory;
    // The reader must not run without a buffer: a failed allocation (which
    // has shown its box) ends the import as no memory.
    OwnedGameBuffer buffer;
    if (buffer.Get() == 0)
        return ImportNoMemory;
    if (path == nullptr)
        return ImportNoInput;
    std::unique_ptr<std::FILE, FileCloser> file(std::fopen(path, "rb"));
    if (!file)
        return ImportNoInput;

    PgnImportContext context{gameFile, buffer.Get(), 0, progress, userData};
    PgnGame* game = storage.Game();
    PrepareRecord(game);
    PgnSource source;
    source.file = file.get();
    PgnReadGames(source, game, flags, pieceLetters, PgnImportStoreGame,
                 reinterpret_cast<intptr_t>(&context));
    return ImportDone;
}

extern "C" ORVAN_API int32_t OvMemReadPgnGame(OvGameBuffer game, HGLOBAL text, uint32_t flags,
                                              const char* pieceLetters)
{
    if (text == nullptr || game == 0)
        return ImportNoInput;
    PgnGameStorage storage;
    if (!storage.Allocated())
        return ImportNoMemory;
    PgnGame* record = storage.Game();
    PrepareRecord(record);
    if (!PgnReadMemory(record, text, flags, pieceLetters))
        return ImportNoInput;
    BuildPgnGame(*record, game);
    return ImportDone;
}
