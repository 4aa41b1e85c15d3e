#pragma once

#include "platform/Clock.h"

#include <string>

namespace tensio {

// In the local time zone, by a pattern of std::put_time; does not follow the user's locale.
std::string formatLocalTime(Date date, char const* pattern);

// Such as 2024/03/05 14:07.
std::string dateAndMinute(Date date);

enum class CalendarUnit { Hour, Day, Month };

// When the unit that contains the date began, in the local time zone, or so many units later.
Date beginningOf(CalendarUnit unit, Date date, int later = 0);

} // namespace tensio
