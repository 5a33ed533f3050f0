#include "platform/message_box.h"

#include <cstdio>
#include <mutex>

#include "orvan.h"

namespace {
std::mutex sinkLock;
OvMessageSink currentSink = nullptr;
intptr_t currentUser = 0;
}  // namespace

void OvSetMessageSink(OvMessageSink sink, intptr_t user)
{
    std::lock_guard guard(sinkLock);
    currentSink = sink;
    currentUser = user;
}

int32_t ShowMessageBox(void* owner, const char* text, const char* caption, uint32_t style)
{
    OvMessageSink sink;
    intptr_t user;
    {
        std::lock_guard guard(sinkLock);
        sink = currentSink;
        user = currentUser;
    }
    if (sink != nullptr)
        return sink(owner, text, caption, style, user);
    std::fprintf(stderr, "%s: %s\n", caption, text);
    return OV_IDOK;
}
