// Sorting a game file by a header field through the game driver's indexes.
#include "keys/sort_kinds.h"

namespace {

// What the driver takes for the host's order: 1 ascending, -2 descending.
constexpr int32_t SortDirection(int32_t order) { return order != 0 ? 1 : -2; }

}  // namespace

int32_t OvIndexSort(OvGameFile file, intptr_t numbers, intptr_t firstGame, intptr_t skipDeleted,
                    int32_t count, int32_t kind, int32_t order)
{
    const SortKind* entry = SortKinds;
    while (entry->headerField != 0 && entry->headerField != kind)
        ++entry;
    if (entry->headerField == 0)
        return OV_SORT_UNKNOWN_KIND;
    if (entry->driverCode == 0)
        return OV_SORT_NOT_SORTABLE;
    const int32_t sorted =
        OvgIndexSort(file, firstGame, skipDeleted, count, entry->driverCode, SortDirection(order), numbers);
    if (sorted == 0)
        return OV_SORT_NO_GAMES;
    if (sorted == -1 || sorted < count)
        return OV_SORT_FAILED;
    return OV_SORT_DONE;
}
