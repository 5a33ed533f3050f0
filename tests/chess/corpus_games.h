// Test-only: the corpus games one by one, for the chess tests that compare two ways of answering.
#ifndef ORVAN_TESTS_CHESS_CORPUS_GAMES_H
#define ORVAN_TESTS_CHESS_CORPUS_GAMES_H

#include <cstdio>
#include <functional>
#include <memory>

#include "pgn/pgn_game.h"
#include "pgn/read/pgn_read.h"
#include "support/corpus.h"

using CorpusGameVisitor = std::function<bool(const PgnGame&)>;

// Calls `visit` with each game until it returns false; false when the corpus cannot be read.
inline bool VisitCorpusGames(const CorpusGameVisitor& visit)
{
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(CorpusPath, "rb"), &std::fclose);
    PgnGameStorage storage;
    if (!file || !storage.Allocated())
        return false;
    const PgnGameCallback call = [](PgnGame* game, int32_t, int32_t, intptr_t visitor) -> int32_t {
        return (*reinterpret_cast<const CorpusGameVisitor*>(visitor))(*game) ? 1 : 0;
    };
    const PgnSource source{file.get(), nullptr, 0};
    PgnReadGames(source, storage.Game(), 0, nullptr, call, reinterpret_cast<intptr_t>(&visit));
    return true;
}

#endif
