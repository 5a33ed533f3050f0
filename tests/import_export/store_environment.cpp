// Stands in for the shared library's load: game driver and locale tables for all tests.
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
