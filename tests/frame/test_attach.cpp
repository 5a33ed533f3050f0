#include <gtest/gtest.h>

#include "fakes/fake_siblings.h"
#include "frame/library_attach.h"
#include "frame/library_mutex.h"
#include "frame/locale_tables.h"

namespace {

TEST(LibraryAttach, InstallsInitialisesLoadsLocaleAndDetachesInReverse)
{
    ResetFakes();
    LocaleSource locale;
    locale.shortDatePictures = {"dd/MM/yyyy"};
    LibraryAttach(locale);
    EXPECT_STREQ(DatePicture, "dd/MM/yyyy");
    LibraryDetach();
    EXPECT_EQ(Fakes().calls, (std::vector<std::string>{"IGInstallGameDriver(0)", "IGGameDriverInit(32000)",
                                                       "IGGameDriverFini()", "IGRemoveGameDriver()"}));
}

TEST(LibraryMutex, OwnerMayTakeItAgain)
{
    LibraryLock outer(LibraryMutex());
    LibraryLock inner(LibraryMutex());  // would hang if the lock were not recursive
}

}  // namespace
