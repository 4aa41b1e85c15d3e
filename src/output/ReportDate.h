#pragma once

#include "platform/Clock.h"

#include <string>

namespace tensio {

// As "2024年 3月05日", in the local time zone.
std::string reportDate(Date date);
std::string reportTime(Date date);
std::string reportDateAndTime(Date date);

} // namespace tensio
