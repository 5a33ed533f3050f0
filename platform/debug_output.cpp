#include "platform/debug_output.h"

#include <mutex>

#include "orvan.h"

namespace {
std::mutex sinkLock;
OvDebugSink currentSink = nullptr;
intptr_t currentUser = 0;
}  // namespace

void OvSetDebugSink(OvDebugSink sink, intptr_t user)
{
    std::lock_guard guard(sinkLock);
    currentSink = sink;
    currentUser = user;
}

void WriteDebugOutput(const char* text)
{
    OvDebugSink sink;
    intptr_t user;
    {
        std::lock_guard guard(sinkLock);
        sink = currentSink;
        user = currentUser;
    }
    if (sink != nullptr)
        sink(text, user);
}
