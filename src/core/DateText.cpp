#include "core/DateText.h"

#include <array>
#include <ctime>

namespace tensio {

std::string formatLocalTime(Date date, char const* pattern)
{
    auto const seconds = std::chrono::system_clock::to_time_t(date);
    std::tm fields {};
    localtime_r(&seconds, &fields);
    std::array<char, 64> text {};
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
    auto const length = std::strftime(text.data(), text.size(), pattern, &fields);
#pragma GCC diagnostic pop
    return {text.data(), length};
}

} // namespace tensio
