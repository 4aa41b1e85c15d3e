#pragma once

#include "platform/Clock.h"

#include <string>
#include <vector>

namespace tensio {

struct DateTick {
    Date date;
    // Names the time from here to the next tick.
    std::string text;
};

// From the one before the first date to the one after the last, in local time: each hour, day,
// week, month, quarter or year, so that a page has room for the texts.
std::vector<DateTick> dateTicks(Date first, Date last);

} // namespace tensio
