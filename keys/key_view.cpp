// A horizontal view of keys: one line per key, each related to the line
// above it, all read in one run of the key database.
#include <algorithm>
#include <cstring>

#include "orvan.h"
#include "siblings/key_database.h"

int32_t OvGetKeyView(int32_t, const int32_t* keys, sKeyViewLine* lines, int32_t, int32_t count)
{
    const int32_t used = std::min(count, int32_t{OV_KEYVIEW_LINES});
    if (used > 0 && (keys == nullptr || lines == nullptr))
        return 0;
    OvkFileAction(1);
    for (int32_t i = 0; i < used; ++i) {
        sKeyViewLine previous{};
        if (i > 0)
            previous = lines[i - 1];
        std::memset(&lines[i], 0, sizeof lines[i]);
        if (keys[i] != 0)
            DbsGetHorViewLine(keys[i], &lines[i], &previous);
    }
    OvkFileAction(0);
    return 1;
}
