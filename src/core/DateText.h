#pragma once

#include "platform/Clock.h"

#include <string>

namespace tensio {

// In the local time zone, under a strftime pattern of numeric fields, which no locale changes.
std::string formatLocalTime(Date date, char const* pattern);

} // namespace tensio
