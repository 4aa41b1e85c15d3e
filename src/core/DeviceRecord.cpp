#include "core/DeviceRecord.h"

#include "core/NumberText.h"
#include "core/Utf8.h"

#include <algorithm>
#include <optional>
#include <string>

namespace tensio {

namespace {

std::optional<float> readField(std::u32string_view characters)
{
    std::string text;
    // What is not ASCII becomes a byte of no number.
    for (auto const character : characters)
        text += static_cast<char>(std::min<char32_t>(character, 0x80));
    return readNumber(text);
}

std::optional<float> readRecord(std::u32string_view record)
{
    auto const integer = readField(record.substr(1, 3));
    auto const tenths = readField(record.substr(4, 1));
    if (!integer || !tenths)
        return std::nullopt;
    return (*integer + *tenths / 10.0f) * (record.front() == U'+' ? 1.0f : -1.0f);
}

bool fitsRecord(char character, std::size_t position)
{
    if (position == 0)
        return character == '+' || character == '-';
    if (position < deviceRecordWidth - 1)
        return character >= '0' && character <= '9';
    return static_cast<unsigned char>(character) < 0x80;
}

} // namespace

std::vector<float> readRecords(std::string_view chunk)
{
    auto const text = decodeUtf8(chunk);
    if (!text || text->size() % deviceRecordWidth != 0)
        return {};
    std::vector<float> pressures;
    for (std::u32string_view rest = *text; !rest.empty(); rest.remove_prefix(deviceRecordWidth)) {
        if (auto const pressure = readRecord(rest.substr(0, deviceRecordWidth)))
            pressures.push_back(*pressure);
    }
    return pressures;
}

bool looksLikeDeviceRecords(std::string_view bytes)
{
    for (std::size_t index = 0; index < bytes.size(); ++index) {
        if (!fitsRecord(bytes[index], index % deviceRecordWidth))
            return false;
    }
    return true;
}

} // namespace tensio
