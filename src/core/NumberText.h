#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tensio {

// Numbers as text, always in C notation: none of these follows the user's locale.

// Rounded to that many decimals.
std::string formatFixed(float value, int decimals);

// A pressure in kPa as the user reads it: with one decimal, without or with its unit.
std::string pressureText(float kPa);
std::string withUnit(float kPa);

// Empty unless the whole text is a floating-point number; ASCII, no blanks. Infinities, "nan" and
// hexadecimal numbers count.
std::optional<float> readNumber(std::string_view text);

} // namespace tensio
