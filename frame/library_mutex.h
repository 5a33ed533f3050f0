// The one lock of the library. It serialises access to game storage only, and
// its owner thread may take it again (a host callback inside a key search runs
// under it and may read a game on the same thread).
#ifndef ORVAN_FRAME_LIBRARY_MUTEX_H
#define ORVAN_FRAME_LIBRARY_MUTEX_H

#include <mutex>

std::recursive_mutex& LibraryMutex();

// Holds LibraryMutex for the lifetime of the object.
using LibraryLock = std::lock_guard<std::recursive_mutex>;

#endif
