#include "output/ReportDate.h"

#include "core/DateText.h"

namespace tensio {

std::string reportDate(Date date)
{
    // No portable pattern writes a month without its leading zero.
    auto month = formatLocalTime(date, "%m");
    if (month.front() == '0')
        month.erase(0, 1);
    return formatLocalTime(date, "%Y年 ") + month + formatLocalTime(date, "月%d日");
}

std::string reportTime(Date date)
{
    return formatLocalTime(date, "%H:%M:%S");
}

std::string dateOfDay(Date date)
{
    return formatLocalTime(date, "%Y年%m月%d日");
}

} // namespace tensio
