#include "frame/library_attach.h"

#include "frame/library_mutex.h"
#include "frame/locale_tables.h"
#include "siblings/game_driver.h"

void LibraryAttach(const LocaleSource& locale)
{
    IGInstallGameDriver(0);
    IGGameDriverInit(32000);
    LoadLocaleTables(locale);
    LibraryMutex();  // created here, before any host call can need it
}

void LibraryDetach()
{
    // The mutex is not destroyed: a host thread may still hold a reference to
    // it while the process ends.
    IGGameDriverFini();
    IGRemoveGameDriver();
}
