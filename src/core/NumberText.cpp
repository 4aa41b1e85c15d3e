#include "core/NumberText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <clocale>
#include <cstdlib>

namespace tensio {

namespace {

// The comma is the point of other locales.
bool mayStandInNumber(char character)
{
    constexpr std::string_view blanksAndComma = "\t\n\v\f\r ,";
    return static_cast<unsigned char>(character) < 0x80
        && blanksAndComma.find(character) == std::string_view::npos;
}

// As std::strtof reads it.
std::string withPointOfLocale(std::string_view text)
{
    std::string result(text);
    if (auto const point = result.find('.'); point != std::string::npos)
        result.replace(point, 1, std::localeconv()->decimal_point);
    return result;
}

} // namespace

std::string formatFixed(float value, int decimals)
{
    // Enough for any float.
    std::array<char, 512> text {};
    auto const result = std::to_chars(
        text.data(), text.data() + text.size(), value, std::chars_format::fixed, decimals);
    return {text.data(), result.ptr};
}

std::string pressureText(float kPa)
{
    return formatFixed(kPa, 1);
}

std::string withUnit(float kPa)
{
    return pressureText(kPa) + " kPa";
}

std::optional<float> readNumber(std::string_view text)
{
    if (text.empty() || !std::ranges::all_of(text, mayStandInNumber))
        return std::nullopt;
    auto const number = withPointOfLocale(text);
    char* end = nullptr;
    auto const value = std::strtof(number.c_str(), &end);
    return end == number.c_str() + number.size() ? std::optional(value) : std::nullopt;
}

} // namespace tensio
