// The index directory of a game file: "OvIndex/" beside the file, where the key
// database keeps what belongs to that game file.
#ifndef ORVAN_FRAME_INDEX_PATH_H
#define ORVAN_FRAME_INDEX_PATH_H

#include <cstdint>

// Size of an index path buffer, terminator included.
inline constexpr int32_t IndexPathSize = 260;

// Results of IndexPathOfGamefile.
enum : int32_t {
    IndexPathBuilt = 1,        // `dest` holds the directory of `path` and "OvIndex/"
    IndexPathNoSeparator = 0,  // `path` names no directory; `dest` holds a copy of it
    IndexPathTooLong = -1,     // the text for `dest` needs more than IndexPathSize; `dest` is ""
};

// Writes the index path of the game file `path` into `dest`, a buffer of
// IndexPathSize characters: the text of `path` up to and including its last
// '/', followed by "OvIndex/". A path without '/' (the empty path and a null
// `path` among them) is copied as it stands. Never writes past the buffer:
// a result that would not fit leaves `dest` empty.
int32_t IndexPathOfGamefile(char* dest, const char* path);

#endif
