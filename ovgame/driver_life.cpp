// Driver life and version of the game store.
#include <atomic>

#include "ovgame/game_buffer.h"
#include "ovgame/game_file.h"
#include "siblings/game_driver.h"

using namespace ovg;

namespace {
std::atomic<bool> installed{false};
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
    // The handle tables are fixed in size; the hint needs no preparation.
    return installed ? 0 : 1;
}

int32_t IGGameDriverFini(void)
{
    for (std::unique_ptr<GameFile>& file : Files().RemoveAll()) {
        std::lock_guard lock(file->lock);
        EndAllBulk(*file);
    }
    Buffers().RemoveAll();
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
