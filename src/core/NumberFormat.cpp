#include "core/NumberFormat.h"

#include <array>
#include <charconv>

namespace tensio {

std::string formatFixed(float value, int decimals)
{
    // The largest float has 39 digits before the point.
    std::array<char, 128> text {};
    auto const result = std::to_chars(
        text.data(), text.data() + text.size(), value, std::chars_format::fixed, decimals);
    return {text.data(), result.ptr};
}

} // namespace tensio
