#include "device-simulator/RecordedStream.h"

#include <map>
#include <stdexcept>
#include <string>

namespace tensio {

namespace {

// These throw exceptions of the kind of std::logic_error.

std::string unescaped(std::string const& text)
{
    static std::map<char, char> const plain {
        {'n', '\n'}, {'r', '\r'}, {'t', '\t'}, {'0', '\0'}, {'\\', '\\'}};
    std::string bytes;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] != '\\') {
            bytes += text[at];
        } else if (text.at(++at) != 'x') {
            bytes += plain.at(text[at]);
        } else {
            std::size_t used = 0;
            bytes += static_cast<char>(std::stoi(text.substr(at + 1, 2), &used, 16));
            if (used != 2)
                throw std::invalid_argument("two digits");
            at += used;
        }
    }
    return bytes;
}

TimedBytes readLine(std::string const& line)
{
    std::size_t used = 0;
    auto const milliseconds = std::stoi(line, &used);
    if (milliseconds < 0 || line.at(used) != ' ')
        throw std::invalid_argument("a pause and a space");
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
        } catch (std::logic_error const&) {
            throw std::invalid_argument(
                "line " + std::to_string(number) + " does not read: " + line);
        }
    }
    return stream;
}

} // namespace tensio
