#include "output/DateTicks.h"

#include "core/DateText.h"

#include <algorithm>
#include <array>

namespace tensio {

namespace {

struct TickKind {
    CalendarUnit unit;
    int step;
    char const* pattern;
};

constexpr auto kinds
    = std::to_array<TickKind>({{CalendarUnit::Hour, 1, "%H:%M"}, {CalendarUnit::Day, 1, "%m/%d"},
        {CalendarUnit::Day, 7, "%m/%d"}, {CalendarUnit::Month, 1, "%m月"},
        {CalendarUnit::Month, 3, "%Y/%m"}, {CalendarUnit::Month, 12, "%Y/%m"},
        {CalendarUnit::Month, 60, "%Y/%m"}, {CalendarUnit::Month, 600, "%Y/%m"}});

DateTick tickOf(TickKind const& kind, Date first, std::size_t index)
{
    auto const date = beginningOf(kind.unit, first, static_cast<int>(index) * kind.step);
    auto text = formatLocalTime(date, kind.pattern);
    if (text.front() == '0')
        text.erase(0, 1);
    return {date, text};
}

} // namespace

std::vector<DateTick> dateTicks(Date first, Date last, std::size_t most)
{
    // More would name a month twice.
    most = std::min<std::size_t>(most, 13);
    std::vector<DateTick> ticks;
    for (auto const& kind : kinds) {
        ticks = {tickOf(kind, first, 0)};
        while (ticks.back().date <= last && ticks.size() < most)
            ticks.push_back(tickOf(kind, first, ticks.size()));
        if (ticks.back().date > last)
            break;
    }
    return ticks;
}

} // namespace tensio
