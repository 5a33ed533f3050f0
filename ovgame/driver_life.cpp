// Driver life and version of the game store.
#include <atomic>

#include "siblings/game_driver.h"

namespace {
std::atomic<bool> installed{false};
std::atomic<int32_t> handleHint{0};
}  // namespace

int32_t IGInstallGameDriver(int32_t mode)
{
    if (mode != 0)
        return 1;
    installed = true;
    return 0;
}

int32_t IGGameDriverInit(int32_t maxGames)
{
    if (!installed)
        return 1;
    handleHint = maxGames > 0 ? maxGames : 0;
    return 0;
}

int32_t IGGameDriverFini(void)
{
    return 0;
}

int32_t IGRemoveGameDriver(void)
{
    installed = false;
    return 0;
}

int32_t OvgGetVersion(uint32_t* version, uint32_t* second)
{
    if (version != nullptr)
        *version = OV_VERSION_WORD;
    if (second != nullptr)
        *second = 0;
    return 1;
}
