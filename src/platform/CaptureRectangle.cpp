#include "platform/CaptureRectangle.h"

#include <array>
#include <charconv>

namespace tensio {

namespace {

std::string exactNumber(double value)
{
    std::array<char, 512> text {};
    auto const result
        = std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed);
    std::string number(text.data(), result.ptr);
    return number.find('.') == std::string::npos ? number + ".0" : number;
}

} // namespace

std::string captureRectangle(ScreenRect const& rect)
{
    return exactNumber(rect.x) + "," + exactNumber(rect.y) + "," + exactNumber(rect.width) + ","
        + exactNumber(rect.height);
}

} // namespace tensio
