// Recording fakes of the game driver and the key database. Every call is
// appended to a log as text, e.g. "IGGameDriverInit(32000)", so that a test
// can check what the library asked and in which order; results and version
// words are set by the test.
#ifndef ORVAN_TESTS_FAKE_SIBLINGS_H
#define ORVAN_TESTS_FAKE_SIBLINGS_H

#include <cstdint>
#include <string>
#include <vector>

struct FakeSiblings {
    std::vector<std::string> calls;

    uint32_t keyVersionWord = 0x00010000;
    int32_t keyVersionResult = 1;
    uint32_t gameVersionWord = 0x00010000;
    int32_t gameVersionResult = 1;
};

// The one instance the fake calls record into and answer from.
FakeSiblings& Fakes();

// Forgets all calls and restores every answer to its default.
void ResetFakes();

#endif
