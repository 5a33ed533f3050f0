#include "orvan.h"
#include "platform/message_box.h"
#include "siblings/game_driver.h"
#include "siblings/key_database.h"

namespace {

// Asks one sibling for its version; a word below 1.0 gets a box and fails.
int32_t CheckSibling(int32_t (*getVersion)(uint32_t*, uint32_t*), const char* conflictText)
{
    uint32_t word = 0;
    int32_t result = getVersion(&word, nullptr);
    if (word < OV_VERSION_WORD) {
        ShowMessageBox(nullptr, conflictText, "Version Error", OV_MB_ICONSTOP | OV_MB_OK);
        result = 0;
    }
    return result;
}

}  // namespace

int32_t OvGetVersion(uint32_t* version, uint32_t* secondVersion)
{
    if (version != nullptr)
        *version = OV_VERSION_WORD;
    if (secondVersion != nullptr)
        *secondVersion = 0;
    // Both siblings are always asked, so that a host sees both boxes.
    int32_t keyResult = CheckSibling(&OvkGetVersion, "Version conflict: OvKey.dll");
    int32_t gameResult = CheckSibling(&OvgGetVersion, "Version conflict: OvGame.dll");
    return keyResult != 0 && gameResult != 0 ? 1 : 0;
}
