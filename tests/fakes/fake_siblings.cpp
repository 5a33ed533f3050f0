#include "fakes/fake_siblings.h"

#include <utility>

FakeSiblings& Fakes()
{
    static FakeSiblings fakes;
    return fakes;
}

void ResetFakes()
{
    Fakes() = FakeSiblings{};
}

int32_t FakeResult(std::string_view function, int32_t fallback)
{
    const auto& results = Fakes().results;
    const auto found = results.find(function);
    return found == results.end() ? fallback : found->second;
}

std::vector<std::string> FakeCallsStartingWith(std::string_view prefix)
{
    std::vector<std::string> found;
    for (const std::string& call : Fakes().calls)
        if (call.starts_with(prefix))
            found.push_back(call);
    return found;
}

void RecordCall(std::string_view function, std::initializer_list<std::string> arguments)
{
    std::string call(function);
    call += '(';
    const char* separator = "";
    for (const std::string& argument : arguments)
        call += std::exchange(separator, ", ") + argument;
    call += ')';
    Fakes().calls.push_back(call);
    if (Fakes().onCall)
        Fakes().onCall(call);
}

int32_t AnswerCall(std::string_view function, int32_t fallback,
                   std::initializer_list<std::string> arguments)
{
    RecordCall(function, arguments);
    return FakeResult(function, fallback);
}

std::string FakeArg(int64_t value)
{
    return std::to_string(value);
}

std::string FakeArg(const char* text)
{
    return text == nullptr ? "null" : '"' + std::string(text) + '"';
}

std::string FakeArg(const void* pointer)
{
    return pointer == nullptr ? "null" : "ptr";
}

int32_t FakeVersion(uint32_t* version, uint32_t* second, uint32_t word, int32_t result)
{
    if (version != nullptr)
        *version = word;
    if (second != nullptr)
        *second = 0;
    return result;
}
