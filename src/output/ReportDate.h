#pragma once

#include "platform/Clock.h"

#include <string>

namespace tensio {

// In the local time zone: "2024年 3月05日", "14:07:09" and "2024年03月05日".
std::string reportDate(Date date);
std::string reportTime(Date date);
std::string dateOfDay(Date date);

} // namespace tensio
