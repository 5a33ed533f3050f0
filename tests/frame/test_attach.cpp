#include <gtest/gtest.h>

#include "fakes/fake_siblings.h"
#include "frame/library_attach.h"
#include "frame/library_mutex.h"
#include "frame/locale_tables.h"

namespace {

TEST(LibraryAttach, InstallsInitialisesThenLoadsLocale)
{
    ResetFakes();
    LocaleSource locale;
    locale.shortDatePictures = {"dd/MM/yyyy"};
    LibraryAttach(locale);
    EXPECT_EQ(Fakes().calls,
              (std::vector<std::string>{"IGInstallGameDriver(0)", "IGGameDriverInit(32000)"}));
    EXPECT_STREQ(DatePicture, "dd/MM/yyyy");
}

TEST(LibraryDetach, FinishesThenRemovesTheDriver)
{
    ResetFakes();
    LibraryDetach();
    EXPECT_EQ(Fakes().calls, (std::vector<std::string>{"IGGameDriverFini()", "IGRemoveGameDriver()"}));
}

TEST(LibraryMutex, OwnerMayTakeItAgain)
{
    LibraryLock outer(LibraryMutex());
    LibraryLock inner(LibraryMutex());
    SUCCEED();
}

}  // namespace
