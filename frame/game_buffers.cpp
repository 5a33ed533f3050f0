// Game buffers: the driver's one-game workspaces that the host holds.
#include "orvan.h"
#include "platform/message_box.h"
#include "siblings/game_driver.h"

OvGameBuffer OvAllocGameBuffer(void)
{
    const OvGameBuffer game = IGGameOpenGame();
    if (game == 0)
        ShowMessageBox(nullptr, "Cannot allocate game buffer", "ERROR", OV_MB_OK);
    return game;
}

int32_t OvFreeGameBuffer(OvGameBuffer game)
{
    IGGameCloseGame(game);
    return 1;
}
