#include "keys/system_error_box.h"

#include <cstdio>
#include <cstring>

#include "orvan.h"
#include "platform/message_box.h"

namespace {

constexpr uint32_t InformationIcon = 0x40;

}  // namespace

void ShowSystemErrorBox(int error)
{
    char text[256];
    // The GNU strerror_r gives the text, in `text` or in a static string.
    const char* message = strerror_r(error, text, sizeof text);
    char title[256];
    std::snprintf(title, sizeof title, "Error %u", static_cast<unsigned>(error));
    ShowMessageBox(nullptr, message, title, InformationIcon | OV_MB_OK);
}
