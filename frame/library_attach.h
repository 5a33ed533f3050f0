// What happens when the shared library is loaded and unloaded. The shared
// object's constructor and destructor call these; tests call them directly.
#ifndef ORVAN_FRAME_LIBRARY_ATTACH_H
#define ORVAN_FRAME_LIBRARY_ATTACH_H

#include "platform/user_locale.h"

// Installs and initialises the game driver, then loads the locale tables from
// `locale`. No result is tested: a failing driver shows up at its first use.
void LibraryAttach(const LocaleSource& locale);

// Finishes and removes the game driver.
void LibraryDetach();

#endif
