// The game driver contract: the calls liborvan makes into libovgame.so, the
// game store. Handles are 32-bit values from the store's own tables, 0 = none.
#ifndef ORVAN_SIBLINGS_GAME_DRIVER_H
#define ORVAN_SIBLINGS_GAME_DRIVER_H

#include <cstdint>

#include "orvan.h"
#include "siblings/driver_records.h"

#define OVGAME_API __attribute__((visibility("default")))

extern "C" {

// ---- Driver life: install and init at load, fini and remove at unload ----

// Registers the driver; `mode` 0 is the only mode. Result 0 on success.
OVGAME_API int32_t IGInstallGameDriver(int32_t mode);
// Prepares the driver's tables; `maxGames` is a hint for the handle tables.
// Result 0 on success.
OVGAME_API int32_t IGGameDriverInit(int32_t maxGames);
// Closes whatever the host left open. Result 0.
OVGAME_API int32_t IGGameDriverFini(void);
// Unregisters the driver. Result 0.
OVGAME_API int32_t IGRemoveGameDriver(void);
// Stores the version word through `version` (and 0 through `second` when not
// null). Result 0 is a failure.
OVGAME_API int32_t OvgGetVersion(uint32_t* version, uint32_t* second);

}  // extern "C"

#endif
