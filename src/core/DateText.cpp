#include "core/DateText.h"

#include <ctime>
#include <iomanip>
#include <locale>
#include <optional>
#include <sstream>

namespace tensio {

namespace {

// No fields for a date that the system cannot tell.
std::optional<std::tm> localTime(Date date)
{
    auto const seconds = std::chrono::system_clock::to_time_t(date);
    auto const* fields = std::localtime(&seconds);
    return fields ? std::optional(*fields) : std::nullopt;
}

} // namespace

std::string formatLocalTime(Date date, char const* pattern)
{
    std::ostringstream text;
    text.imbue(std::locale::classic());
    if (auto const fields = localTime(date))
        text << std::put_time(&*fields, pattern);
    return text.str();
}

std::string dateAndMinute(Date date)
{
    return formatLocalTime(date, "%Y/%m/%d %H:%M");
}

Date beginningOf(CalendarUnit unit, Date date, int later)
{
    auto fields = localTime(date).value_or(std::tm {});
    fields.tm_sec = fields.tm_min = 0;
    fields.tm_isdst = -1;
    if (unit != CalendarUnit::Hour)
        fields.tm_hour = 0;
    if (unit == CalendarUnit::Month)
        fields.tm_mday = 1;
    auto& counted = unit == CalendarUnit::Hour ? fields.tm_hour
        : unit == CalendarUnit::Day            ? fields.tm_mday
                                               : fields.tm_mon;
    counted += later;
    return std::chrono::system_clock::from_time_t(std::mktime(&fields));
}

} // namespace tensio
