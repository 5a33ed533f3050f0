// Version of the key database.
#include "siblings/key_database.h"

int32_t OvkGetVersion(uint32_t* version, uint32_t* second)
{
    if (version != nullptr)
        *version = OV_VERSION_WORD;
    if (second != nullptr)
        *second = 0;
    return 1;
}
