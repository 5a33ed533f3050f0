#include "frame/library_mutex.h"

std::recursive_mutex& LibraryMutex()
{
    // Constructed on first use and never destroyed, so that it outlives every
    // caller, including host threads still running at unload.
    static auto* mutex = new std::recursive_mutex;
    return *mutex;
}
