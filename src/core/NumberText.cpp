#include "core/NumberText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <locale.h> // NOLINT(modernize-deprecated-headers): newlocale is POSIX
#include <stdlib.h> // NOLINT(modernize-deprecated-headers): strtof_l is POSIX

namespace tensio {

namespace {

locale_t cLocale()
{
    static auto const locale = newlocale(LC_ALL_MASK, "C", nullptr);
    return locale;
}

bool mayStandInNumber(char character)
{
    constexpr std::string_view blanks = "\t\n\v\f\r ";
    return static_cast<unsigned char>(character) < 0x80
        && blanks.find(character) == std::string_view::npos;
}

// Enough for any double in fixed notation.
using Buffer = std::array<char, 512>;

} // namespace

std::string formatFixed(float value, int decimals)
{
    Buffer text {};
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
    std::string const terminated(text);
    char* end = nullptr;
    auto const value = strtof_l(terminated.c_str(), &end, cLocale());
    return end == terminated.c_str() + terminated.size() ? std::optional(value) : std::nullopt;
}

} // namespace tensio
