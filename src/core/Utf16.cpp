#include "core/Utf16.h"

#include "core/Utf8.h"

namespace tensio {

namespace {

void appendUnit(std::string& bytes, char32_t unit)
{
    bytes += static_cast<char>(unit & 0xffU);
    bytes += static_cast<char>(unit >> 8U & 0xffU);
}

} // namespace

std::string encodeUtf16(std::string_view utf8)
{
    std::string bytes;
    bytes.reserve(2 * utf8.size() + 2);
    appendUnit(bytes, 0xfeff);
    for (auto const character : decodeUtf8(utf8).value_or(std::u32string())) {
        if (character < 0x10000) {
            appendUnit(bytes, character);
            continue;
        }
        auto const pair = character - 0x10000;
        appendUnit(bytes, 0xd800 + (pair >> 10U));
        appendUnit(bytes, 0xdc00 + (pair & 0x3ffU));
    }
    return bytes;
}

} // namespace tensio
