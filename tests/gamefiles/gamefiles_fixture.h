// Shared by the contract tests of game files, game buffers and walking: a
// fresh set of fakes for each test, and a look at the library's lock.
#ifndef ORVAN_TESTS_GAMEFILES_FIXTURE_H
#define ORVAN_TESTS_GAMEFILES_FIXTURE_H

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

#include "fakes/fake_siblings.h"
#include "frame/library_mutex.h"
#include "orvan.h"

using CallLog = std::vector<std::string>;

class FakeSiblingsTest : public ::testing::Test {
protected:
    void SetUp() override { ResetFakes(); }
    void TearDown() override { ResetFakes(); }
};

// With one game buffer allocated through the library and the log cleared.
class FakeGameBufferTest : public FakeSiblingsTest {
protected:
    void SetUp() override
    {
        FakeSiblingsTest::SetUp();
        game = OvAllocGameBuffer();
        Fakes().calls.clear();
    }

    OvGameBuffer game = 0;
};

// True when some thread holds LibraryMutex: another thread cannot take it.
inline bool LibraryMutexHeld()
{
    bool taken = false;
    std::thread probe([&] {
        taken = LibraryMutex().try_lock();
        if (taken)
            LibraryMutex().unlock();
    });
    probe.join();
    return !taken;
}

#endif
