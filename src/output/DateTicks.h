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

// From the one before the first date to the one after the last, at most 200 years later, in local
// time: each hour, day, week, month, quarter, or one or more years. At most as many as there is
// room for, which is at least 5.
std::vector<DateTick> dateTicks(Date first, Date last, std::size_t most);

} // namespace tensio
