// Text inside the game store is code page 437 (OEM); text at the library's
// boundary is Windows-1252 (ANSI). Two fixed byte tables translate between
// them. They are not inverses of each other: a byte without a counterpart
// becomes a marker byte, B0 (degree sign) towards the host and FA (middle
// dot) towards the store.
#ifndef ORVAN_HEADER_CODE_PAGES_H
#define ORVAN_HEADER_CODE_PAGES_H

#include <array>
#include <cstdint>

using CodePageTable = std::array<uint8_t, 256>;

extern const CodePageTable OemToAnsiTable;
extern const CodePageTable AnsiToOemTable;

// Copies `source` to `dest` through OemToAnsiTable: at most size - 1
// characters, then a terminator when size is above 0 (size 0 or below writes
// nothing). Returns the address of the terminator in `dest` (`dest` itself
// when nothing was written), so that copies can be chained. A null `source`
// counts as the empty text.
char* OemToAnsiCopy(char* dest, const char* source, int32_t size);

// As OemToAnsiCopy, through AnsiToOemTable.
char* AnsiToOemCopy(char* dest, const char* source, int32_t size);

#endif
