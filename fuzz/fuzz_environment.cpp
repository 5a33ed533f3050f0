// Stands in for the shared library's load: the game driver and the locale
// tables are set up once, before the first input, as the host's process would
// have them. Debug trace records and message boxes are dropped.
#include <cstdint>

#include "frame/library_attach.h"
#include "orvan.h"

namespace {

int32_t AnswerOk(void*, const char*, const char*, uint32_t, intptr_t) { return OV_IDOK; }

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    LibraryAttach(LocaleSource{});
    OvSetMessageSink(AnswerOk, 0);
    return 0;
}
