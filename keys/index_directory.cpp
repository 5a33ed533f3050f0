// Making and removing the game driver's sort indexes: the directory named by
// the host is made first, and a failure to make it is shown in a box.
#include <sys/stat.h>

#include <cerrno>

#include "keys/system_error_box.h"
#include "orvan.h"
#include "siblings/game_driver.h"

int32_t OvIndexCreateUpdate(OvGameFile file, const char* directory, intptr_t codes, intptr_t reserved1,
                            intptr_t reserved2, intptr_t reserved3, intptr_t reserved4)
{
    if (directory == nullptr)
        return 0;
    if (mkdir(directory, 0777) != 0 && errno != EEXIST) {
        ShowSystemErrorBox(errno);
        return 0;
    }
    return OvgIndexCreate(file, codes, reserved1, directory, reserved2, reserved3, reserved4);
}

int32_t OvIndexDelete(OvGameFile file, int32_t kind, const char* directory)
{
    if (kind != HdrStatus)
        return -1;
    return OvgIndexDelete(file, OvgStatusIndex, reinterpret_cast<intptr_t>(directory));
}
