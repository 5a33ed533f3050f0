// OvConvertGameToPgn, OvExportGames and OvCreatePgnGame: stored games out as
// PgnGame records and PGN text.
#include <cstdio>
#include <memory>
#include <new>

#include "orvan.h"
#include "pgn/pgn_game.h"
#include "frame/owned_game_buffer.h"
#include "pgn/write/game_to_pgn.h"
#include "pgn/write/game_writer.h"
#include "pgn/write/pgn_sink.h"
#include "siblings/game_driver.h"

namespace {

enum ConvertResult : int32_t { ConvertDone = 0, ConvertNoMemory = 1, ConvertLimit = 2 };

// The stack of pending alternatives of one conversion, on the heap.
std::unique_ptr<PendingLine[]> AllocatePendingLines()
{
    return std::unique_ptr<PendingLine[]>(new (std::nothrow) PendingLine[PendingLineCount]);
}

bool IsLaidOut(const PgnGame* pgn)
{
    return pgn != nullptr && pgn->position != nullptr && pgn->moves != nullptr &&
           pgn->nags != nullptr && pgn->commentIndex != nullptr && pgn->commentText != nullptr;
}

struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

}  // namespace

extern "C" ORVAN_API int32_t OvConvertGameToPgn(OvGameBuffer game, PgnGame* pgn)
{
    if (!IsLaidOut(pgn))
        return ConvertNoMemory;
    auto stack = AllocatePendingLines();
    if (!stack)
        return ConvertNoMemory;
    // The host's record comes back with no trace of an earlier game.
    ClearPgnGame(pgn);
    return GameToPgnGame(game, pgn, stack.get()) == 1 ? ConvertDone : ConvertLimit;
}

extern "C" ORVAN_API int32_t OvExportGames(const char* path, OvGameFile gamefile,
                                           NextGameCallback nextGame, uint32_t flags,
                                           intptr_t userData)
{
    PgnGameStorage storage;
    if (!storage.Allocated())
        return 0;
    // A failed allocation has shown its box; no buffer, no export.
    OwnedGameBuffer buffer;
    if (buffer.Get() == 0)
        return 0;
    auto stack = AllocatePendingLines();
    if (!stack || path == nullptr || nextGame == nullptr)
        return 0;
    std::unique_ptr<std::FILE, FileCloser> file(std::fopen(path, "w"));
    if (!file)
        return 0;

    int32_t written = 0;
    PgnSink sink(file.get());
    for (int32_t number = nextGame(userData); number != 0; number = nextGame(userData)) {
        // What a failed load leaves in the buffer (an empty game) is exported.
        OvgLoadGame(buffer.Get(), gamefile, number, 0);
        if (GameToPgnGame(buffer.Get(), storage.Game(), stack.get()) == 1) {
            PgnWriteGame(sink, *storage.Game());
            ++written;
        }
    }
    sink.Flush();
    return written;
}

extern "C" ORVAN_API HGLOBAL OvCreatePgnGame(OvGameBuffer game, uint32_t flags)
{
    PgnGameStorage storage;
    if (!storage.Allocated())
        return nullptr;
    {
        auto stack = AllocatePendingLines();
        if (!stack || GameToPgnGame(game, storage.Game(), stack.get()) != 1)
            return nullptr;
    }
    PgnSink sink;
    if (!sink.HasMemoryText())
        return nullptr;
    PgnWriteGame(sink, *storage.Game());
    return sink.TakeMemoryText();
}
