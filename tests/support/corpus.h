// The real PGN files the tests read, and how much of them a slow (sanitizer) build reads.
#ifndef ORVAN_TESTS_SUPPORT_CORPUS_H
#define ORVAN_TESTS_SUPPORT_CORPUS_H

#include <cstddef>
#include <cstdint>

inline constexpr const char* CorpusPath = ORVAN_SOURCE_DIR "/../shared/corpus/selfplay.pgn";
inline constexpr const char* EcoPath = "/usr/share/pgn-extract/eco.pgn";

#if defined(__SANITIZE_ADDRESS__)
inline constexpr size_t CorpusGameLimit = 1500;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
inline constexpr size_t CorpusGameLimit = 1500;
#else
inline constexpr size_t CorpusGameLimit = SIZE_MAX;
#endif
#else
inline constexpr size_t CorpusGameLimit = SIZE_MAX;
#endif

#endif
