// The path of an open game file, by which the key database tells its own.
#include <sqlite3.h>

#include <algorithm>
#include <climits>
#include <cstring>

#include "ovgame/game_file.h"
#include "siblings/game_driver.h"

int32_t OvgGetGamefilePath(uint32_t file, char* path, int32_t size)
{
    ovg::GameFile* open = ovg::Files().Find(file);
    if (open == nullptr)
        return 0;
    std::lock_guard lock(open->lock);
    const char* name = sqlite3_db_filename(open->db.get(), "main");
    if (name == nullptr || *name == '\0')
        return 0;
    const size_t length = std::strlen(name);
    if (path != nullptr && size > 0) {
        const size_t copied = std::min(length, static_cast<size_t>(size) - 1);
        std::memcpy(path, name, copied);
        path[copied] = '\0';
    }
    return static_cast<int32_t>(std::min<size_t>(length, INT32_MAX));
}
