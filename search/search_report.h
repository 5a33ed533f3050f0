// The calls a search makes to the host's callback: start, hits, progress at
// most once a second while no hits come, and end.
#ifndef ORVAN_SEARCH_SEARCH_REPORT_H
#define ORVAN_SEARCH_SEARCH_REPORT_H

#include <cstdint>

#include "orvan.h"

// Milliseconds that must pass, strictly more, between two progress calls.
inline constexpr uint32_t ProgressInterval = 1000;

class SearchReport {
public:
    SearchReport(SearchCallback callback, intptr_t user) : callback_(callback), user_(user) {}

    // The start call with the file's game count (a negative count, from a
    // file that is not open, reports 0); starts the progress timer.
    void Start(int32_t count);
    // A hit call. False when the host stops the search.
    bool Hit(uint32_t game, int32_t number);
    // A hit call of a batch search, which also restarts the progress timer.
    bool TimedHit(uint32_t game, int32_t number);
    // Game `number` was no hit: a progress call when more than
    // ProgressInterval has passed since the last call. False when the host
    // stops the search.
    bool Missed(int32_t number);
    // The end call, (0, total, total, user); total is 0 before Start.
    void End();

    int32_t Total() const { return total_; }

private:
    SearchCallback callback_;
    intptr_t user_;
    int32_t total_ = 0;
    uint32_t lastCall_ = 0;
};

#endif
