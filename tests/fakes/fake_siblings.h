// Recording fakes of the game driver and the key database. Every call is
// appended to a log as text with its arguments, e.g. "IGGameDriverInit(32000)"
// or "OvgOpenGamefile(\"/d/a.ovg\", 1)" (texts quoted, pointers as "ptr" or
// "null"), so that a test can check what the library asked and in which order.
// Each call answers what the test set in `results` under the function's name,
// else the default noted below; game buffers hold a small game the test lays
// out, which the walking calls follow.
#ifndef ORVAN_TESTS_FAKE_SIBLINGS_H
#define ORVAN_TESTS_FAKE_SIBLINGS_H

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "siblings/driver_records.h"

// A game in a fake game buffer: its main line and how far it has been played.
struct FakeGame {
    BoardRecord initialBoard{};    // what GetInitialPosition delivers
    BoardRecord currentBoard{};    // what IGGameGetBoard delivers
    std::vector<MoveXY> mainLine;  // the moves after the root node
    int32_t played = 0;            // plies played from the initial position
    int32_t sourceNumber = 0;      // as put by IGGamePutSourceLoadnumber
};

struct FakeSiblings {
    std::vector<std::string> calls;
    // Runs inside every fake call, right after it is logged.
    std::function<void(const std::string& call)> onCall;
    // Results by function name, for the calls that answer a plain number or
    // handle. Defaults: success (1, 0 or -1 as the contract has it; handles
    // 100 for a game file; 0 for IDIsDatabaseGamefile; the status answers 0).
    std::map<std::string, int32_t, std::less<>> results;

    uint32_t keyVersionWord = 0x00010000;
    int32_t keyVersionResult = 1;
    uint32_t gameVersionWord = 0x00010000;

    // Game buffers by handle; IGGameOpenGame adds one under `nextGame`
    // (unless its result is set), IGGameCloseGame removes it. Handles not in
    // the map get the failure results of the contract.
    std::map<uint32_t, FakeGame> games;
    uint32_t nextGame = 1;

    // The block the key database got from DbsKeyCacheOn, until DbsKeyCacheOff.
    void* keyCache = nullptr;
};

// The one instance the fake calls record into and answer from.
FakeSiblings& Fakes();

// Forgets all calls, games and answers and restores every default.
void ResetFakes();

// The result set for `function`, else `fallback`.
int32_t FakeResult(std::string_view function, int32_t fallback);

// The logged calls that start with `prefix` ("PlayMoves" or "PlayMoves(1,"), in order.
std::vector<std::string> FakeCallsStartingWith(std::string_view prefix);

// Logs one call as "function(arg, ...)" and runs `onCall`.
void RecordCall(std::string_view function, std::initializer_list<std::string> arguments);

// RecordCall, then the result set for `function`, else `fallback`.
int32_t AnswerCall(std::string_view function, int32_t fallback,
                   std::initializer_list<std::string> arguments);

// The body of a fake that logs its call and answers the result set for it,
// else `fallback`: int32_t F(int32_t a) FAKE_ANSWER(F, 1, FakeArg(a))
#define FAKE_ANSWER(function, fallback, ...) \
    { return AnswerCall(#function, fallback, {__VA_ARGS__}); }

// Answers a version call: `word` through `version`, 0 through `second`.
int32_t FakeVersion(uint32_t* version, uint32_t* second, uint32_t word, int32_t result);

// Argument texts for RecordCall.
std::string FakeArg(int64_t value);
std::string FakeArg(const char* text);
std::string FakeArg(const void* pointer);

#endif
