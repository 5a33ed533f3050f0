// The test program stands in for the shared library's load: it installs the
// game driver and the locale tables before the first test and removes the
// driver after the last.
#include <gtest/gtest.h>

#include "frame/library_attach.h"

namespace {

class StoreEnvironment : public ::testing::Environment {
public:
    void SetUp() override { LibraryAttach(LocaleSource{}); }
    void TearDown() override { LibraryDetach(); }
};

const auto* const environment = ::testing::AddGlobalTestEnvironment(new StoreEnvironment);

}  // namespace
