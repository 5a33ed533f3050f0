// The loop of the header and position searches: batches of up to
// SearchBatchGames packed games read into one data buffer, with the library's
// lock held only for the read, then each game tested and reported.
#ifndef ORVAN_SEARCH_BATCH_LOOP_H
#define ORVAN_SEARCH_BATCH_LOOP_H

#include <algorithm>
#include <cstdint>

#include "frame/library_mutex.h"
#include "search/search_report.h"
#include "search/search_resources.h"
#include "siblings/game_driver.h"

// Tests every game of `file` from the first on with `isHit(packed, number)`
// and reports to `report` (started already) until the file ends, a read
// fails or the host stops the search. `game` is what a hit call hands over.
template <class IsHit>
void SearchInBatches(OvGameFile file, OvGameBuffer game, uint8_t* buffer, SearchReport& report, IsHit isHit)
{
    uint32_t places[SearchBatchGames + 1];
    int32_t first = 0;
    do {
        int32_t count;
        {
            LibraryLock lock(LibraryMutex());
            count = OvgReadGames(file, first, buffer, places, SearchBufferBytes, SearchBatchGames);
        }
        if (count <= 0)
            return;
        count = std::min(count, SearchBatchGames);
        for (int32_t k = 0; k < count; ++k) {
            const uint32_t offset = places[k] - places[0];
            if (offset >= static_cast<uint32_t>(SearchBufferBytes))
                return;  // a place outside the buffer: nothing more can be read safely
            const int32_t number = first + k + 1;
            const bool goOn = isHit(buffer + offset, number) ? report.TimedHit(game, number) : report.Missed(number);
            if (!goOn)
                return;
        }
        first += count;
    } while (first < report.Total());
}

#endif
