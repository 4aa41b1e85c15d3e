#include "core/DateText.h"

#include <ctime>
#include <iomanip>
#include <locale>
#include <sstream>

namespace tensio {

std::string formatLocalTime(Date date, char const* pattern)
{
    auto const seconds = std::chrono::system_clock::to_time_t(date);
    std::ostringstream text;
    text.imbue(std::locale::classic());
    // Empty for a date that the system cannot tell.
    if (auto const* fields = std::localtime(&seconds)) // NOLINT(concurrency-mt-unsafe)
        text << std::put_time(fields, pattern);
    return text.str();
}

std::string dateAndMinute(Date date)
{
    return formatLocalTime(date, "%Y/%m/%d %H:%M");
}

} // namespace tensio
