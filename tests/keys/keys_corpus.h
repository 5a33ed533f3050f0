// A prefix of the self-play corpus imported into a game file, with the ECO
// opening key tree as the open key database, shared by the integration tests.
#ifndef ORVAN_TESTS_KEYS_KEYS_CORPUS_H
#define ORVAN_TESTS_KEYS_KEYS_CORPUS_H

#include <filesystem>
#include <string>

#include "orvan.h"

inline const std::string CorpusPath = ORVAN_SOURCE_DIR "/../shared/corpus/selfplay.pgn";
inline const std::string EcoPath = "/usr/share/pgn-extract/eco.pgn";
inline const std::string PgnExtract = "/usr/games/pgn-extract";

// Writes the first `games` games of the corpus to `path` without their
// opening tags (ECO, Opening, Variation, SubVariation). False when the
// corpus is missing.
bool CutCorpusPrefix(const std::filesystem::path& path, int games);

// Opens a new key database at `gameFile` holding the ECO tree. False when
// the ECO file is missing or the database cannot be made.
bool OpenEcoDatabase(const std::filesystem::path& gameFile);

#endif
