// Load and unload of liborvan.so. The two siblings are dependencies of the
// shared object, so the loader has run their constructors before this one.
#include "frame/library_attach.h"

namespace {

__attribute__((constructor)) void OnLibraryLoad()
{
    LibraryAttach(UserLocale());
}

__attribute__((destructor)) void OnLibraryUnload()
{
    LibraryDetach();
}

}  // namespace
