#include "search/search_report.h"

#include "platform/tick_clock.h"

void SearchReport::Start(int32_t count)
{
    total_ = count > 0 ? count : 0;
    callback_(0, 0, total_, user_);
    lastCall_ = TickCount();
}

bool SearchReport::Hit(uint32_t game, int32_t number)
{
    return callback_(game, number, total_, user_) != 0;
}

bool SearchReport::TimedHit(uint32_t game, int32_t number)
{
    lastCall_ = TickCount();
    return Hit(game, number);
}

bool SearchReport::Missed(int32_t number)
{
    const uint32_t now = TickCount();
    if (now - lastCall_ <= ProgressInterval)  // unsigned: right across the wrap of the count
        return true;
    lastCall_ = now;
    return callback_(0, number, total_, user_) != 0;
}

void SearchReport::End()
{
    callback_(0, total_, total_, user_);
}
