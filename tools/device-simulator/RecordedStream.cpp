#include "device-simulator/RecordedStream.h"

#include <algorithm>
#include <charconv>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>

namespace tensio {

namespace {

struct Unreadable { };

char takeHex(std::string_view& text)
{
    int value = 0;
    auto const* const end = text.data() + std::min<std::size_t>(text.size(), 2);
    auto const result = std::from_chars(text.data(), end, value, 16);
    if (result.ec != std::errc() || result.ptr != text.data() + 2)
        throw Unreadable {};
    text.remove_prefix(2);
    return static_cast<char>(value);
}

std::string unescaped(std::string_view text)
{
    static std::map<char, char> const plain {
        {'n', '\n'}, {'r', '\r'}, {'t', '\t'}, {'0', '\0'}, {'\\', '\\'}};
    std::string bytes;
    while (!text.empty()) {
        auto const character = text.front();
        text.remove_prefix(1);
        if (character != '\\') {
            bytes += character;
            continue;
        }
        if (text.empty())
            throw Unreadable {};
        auto const escape = text.front();
        text.remove_prefix(1);
        if (escape == 'x')
            bytes += takeHex(text);
        else if (auto const found = plain.find(escape); found != plain.end())
            bytes += found->second;
        else
            throw Unreadable {};
    }
    return bytes;
}

TimedBytes readLine(std::string_view line)
{
    int milliseconds = 0;
    auto const result = std::from_chars(line.data(), line.data() + line.size(), milliseconds);
    auto const used = static_cast<std::size_t>(result.ptr - line.data());
    if (result.ec != std::errc() || milliseconds < 0 || used >= line.size() || line[used] != ' ')
        throw Unreadable {};
    return {milliseconds / 1000.0, unescaped(line.substr(used + 1))};
}

} // namespace

std::vector<TimedBytes> readRecordedStream(std::istream& input)
{
    std::vector<TimedBytes> stream;
    std::string line;
    for (int number = 1; std::getline(input, line); ++number) {
        if (line.empty() || line.front() == '#')
            continue;
        try {
            stream.push_back(readLine(line));
        } catch (Unreadable const&) {
            throw std::invalid_argument(
                "line " + std::to_string(number) + " does not read: " + line);
        }
    }
    return stream;
}

} // namespace tensio
