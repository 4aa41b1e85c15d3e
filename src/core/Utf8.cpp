#include "core/Utf8.h"

#include <array>
#include <bit>
#include <cstddef>

namespace tensio {

namespace {

struct Decoded {
    char32_t character;
    std::size_t length;
};

// Takes the first character of a text that is not empty.
std::optional<Decoded> decodeFirst(std::string_view bytes)
{
    auto const lead = static_cast<unsigned char>(bytes.front());
    if (lead < 0x80)
        return Decoded {lead, 1};
    auto const length = static_cast<std::size_t>(std::countl_one(lead));
    if (length < 2 || length > 4 || bytes.size() < length)
        return std::nullopt;

    char32_t character = lead & (0x7fU >> length);
    for (auto const byte : bytes.substr(1, length - 1)) {
        auto const bits = static_cast<unsigned char>(byte);
        if ((bits & 0xc0U) != 0x80U)
            return std::nullopt;
        character = (character << 6U) | (bits & 0x3fU);
    }
    constexpr std::array<char32_t, 5> smallest {0, 0, 0x80, 0x800, 0x10000};
    bool const isSurrogate = character >= 0xd800 && character <= 0xdfff;
    if (character < smallest.at(length) || character > 0x10ffff || isSurrogate)
        return std::nullopt;
    return Decoded {character, length};
}

} // namespace

std::optional<std::u32string> decodeUtf8(std::string_view bytes)
{
    std::u32string text;
    text.reserve(bytes.size());
    while (!bytes.empty()) {
        auto const decoded = decodeFirst(bytes);
        if (!decoded)
            return std::nullopt;
        text += decoded->character;
        bytes.remove_prefix(decoded->length);
    }
    return text;
}

} // namespace tensio
