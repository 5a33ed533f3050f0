// A prefix of the self-play corpus imported into a game file, with the ECO
// opening key tree as the open key database, shared by the integration tests.
#ifndef ORVAN_TESTS_KEYS_KEYS_CORPUS_H
#define ORVAN_TESTS_KEYS_KEYS_CORPUS_H

#include <filesystem>
#include <string>

#include "orvan.h"
#include "search/corpus_support.h"

inline const std::string EcoPath = "/usr/share/pgn-extract/eco.pgn";
inline const std::string PgnExtract = "/usr/games/pgn-extract";

// Writes the first `games` games of the corpus to `path` without their
// opening tags. False when the corpus is missing.
inline bool CutCorpusPrefix(const std::filesystem::path& path, int games)
{
    return !CopyCorpusPrefix(path, games, false).empty();
}

// Opens a new key database at `gameFile` holding the ECO tree. False when
// the ECO file is missing or the database cannot be made.
bool OpenEcoDatabase(const std::filesystem::path& gameFile);

#endif
