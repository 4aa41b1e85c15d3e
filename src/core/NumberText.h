#pragma once

#include <optional>
#include <string_view>

namespace tensio {

// A text that is, as a whole, a floating-point number in C notation; ASCII, no blanks. Infinities,
// "nan" and hexadecimal numbers count. Never follows the user's locale.
std::optional<float> readNumber(std::string_view text);

} // namespace tensio
