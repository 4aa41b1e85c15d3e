#include "NaiveReader.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace tensio::fuzz {

namespace {

constexpr int silenceMilliseconds = 20;
constexpr std::size_t mostHeld = 24576;
constexpr std::size_t recordCharacters = 6;

// The well-formed sequences of UTF-8, as the Unicode standard tabulates them; bytes after the
// second are 80 to BF.
struct Sequence {
    unsigned firstLow, firstHigh, secondLow, secondHigh;
    std::size_t length;
};
constexpr std::array<Sequence, 9> sequences {{
    {0x00, 0x7f, 0x00, 0xff, 1},
    {0xc2, 0xdf, 0x80, 0xbf, 2},
    {0xe0, 0xe0, 0xa0, 0xbf, 3},
    {0xe1, 0xec, 0x80, 0xbf, 3},
    {0xed, 0xed, 0x80, 0x9f, 3},
    {0xee, 0xef, 0x80, 0xbf, 3},
    {0xf0, 0xf0, 0x90, 0xbf, 4},
    {0xf1, 0xf3, 0x80, 0xbf, 4},
    {0xf4, 0xf4, 0x80, 0x8f, 4},
}};

bool isWithin(char character, unsigned low, unsigned high)
{
    auto const byte = static_cast<unsigned char>(character);
    return byte >= low && byte <= high;
}

bool begins(std::string_view text, Sequence const& sequence)
{
    if (text.size() < sequence.length || !isWithin(text[0], sequence.firstLow, sequence.firstHigh))
        return false;
    for (std::size_t index = 1; index < sequence.length; ++index) {
        if (!isWithin(text[index], index == 1 ? sequence.secondLow : 0x80,
                index == 1 ? sequence.secondHigh : 0xbf))
            return false;
    }
    return true;
}

// Each character's bytes; nothing when some byte belongs to none.
std::optional<std::vector<std::string_view>> charactersOf(std::string_view text)
{
    std::vector<std::string_view> characters;
    while (!text.empty()) {
        std::size_t length = 0;
        for (auto const& sequence : sequences) {
            if (begins(text, sequence))
                length = sequence.length;
        }
        if (length == 0)
            return std::nullopt;
        characters.push_back(text.substr(0, length));
        text.remove_prefix(length);
    }
    return characters;
}

bool isDigit(char character)
{
    return character >= '0' && character <= '9';
}

std::string lowered(std::string_view text)
{
    std::string lower(text);
    for (auto& character : lower) {
        if (character >= 'A' && character <= 'Z')
            character = static_cast<char>(character - 'A' + 'a');
    }
    return lower;
}

// "1", "1.", ".5", "1e2": digits with at most one point and at most one exponent.
std::optional<double> decimal(std::string_view text)
{
    double digits = 0.0;
    int digitCount = 0;
    int digitsAfterPoint = 0;
    bool hasPoint = false;
    std::size_t at = 0;
    for (; at < text.size() && (isDigit(text[at]) || (text[at] == '.' && !hasPoint)); ++at) {
        if (text[at] == '.') {
            hasPoint = true;
            continue;
        }
        digits = digits * 10.0 + (text[at] - '0');
        ++digitCount;
        digitsAfterPoint += hasPoint ? 1 : 0;
    }
    if (digitCount == 0)
        return std::nullopt;
    auto const value = digits / std::pow(10.0, digitsAfterPoint);
    if (at == text.size())
        return value;
    // Of three characters an exponent can only be the last.
    if (text[at] == 'e' && at + 2 == text.size() && isDigit(text[at + 1]))
        return value * std::pow(10.0, text[at + 1] - '0');
    return std::nullopt;
}

std::optional<double> hexadecimalDigit(char character)
{
    if (isDigit(character))
        return character - '0';
    if (character >= 'a' && character <= 'f')
        return character - 'a' + 10;
    return std::nullopt;
}

std::optional<double> unsignedNumber(std::string_view text)
{
    if (text == "inf")
        return std::numeric_limits<double>::infinity();
    if (text == "nan")
        return std::numeric_limits<double>::quiet_NaN();
    if (text.size() == 3 && text.starts_with("0x"))
        return hexadecimalDigit(text[2]);
    return decimal(text);
}

std::optional<float> recordPressure(std::vector<std::string_view> const& record)
{
    std::string integer;
    for (std::size_t index = 1; index <= 3; ++index)
        integer += record[index];
    auto const whole = naiveNumber(integer);
    auto const tenths = naiveNumber(record[4]);
    if (!whole || !tenths)
        return std::nullopt;
    auto const size = *whole + *tenths / 10.0f;
    return record[0] == "+" ? size : -size;
}

// Records, the last perhaps cut short.
bool isAsTheDeviceWrites(std::string_view text)
{
    while (!text.empty()) {
        auto const record = text.substr(0, recordCharacters);
        if (record[0] != '+' && record[0] != '-')
            return false;
        auto const digits = record.substr(1, 4);
        if (!std::ranges::all_of(digits, isDigit))
            return false;
        if (record.size() == recordCharacters && !isWithin(record.back(), 0x00, 0x7f))
            return false;
        text.remove_prefix(record.size());
    }
    return true;
}

// Where records begin that are as the device writes them, last to the end and have that many bytes,
// but are shifted against the beginning of the text; 0 when there are none.
std::size_t shiftedStart(std::string_view text, std::size_t leastBytes)
{
    for (std::size_t start = 1; start + leastBytes <= text.size(); ++start) {
        if (start % recordCharacters != 0 && isAsTheDeviceWrites(text.substr(start)))
            return start;
    }
    return 0;
}

void readChunk(std::string_view chunk, int milliseconds, std::vector<Reading>& readings)
{
    auto const characters = charactersOf(chunk);
    if (!characters || characters->size() % recordCharacters != 0)
        return;
    for (auto first = characters->begin(); first != characters->end(); first += recordCharacters) {
        if (auto const pressure = recordPressure({first, first + recordCharacters}))
            readings.push_back({milliseconds, *pressure});
    }
}

} // namespace

std::optional<float> naiveNumber(std::string_view text)
{
    for (auto const character : text) {
        if (!isWithin(character, '!', '~'))
            return std::nullopt;
    }
    auto const lower = lowered(text);
    bool const hasSign = lower.starts_with('+') || lower.starts_with('-');
    auto const value = unsignedNumber(std::string_view(lower).substr(hasSign ? 1 : 0));
    if (!value)
        return std::nullopt;
    return static_cast<float>(lower.front() == '-' ? -*value : *value);
}

std::vector<Reading> readNaively(FuzzInput const& input)
{
    std::vector<Reading> readings;
    std::string held;
    bool isCut = false;
    int now = 0;
    auto const read = [&](std::size_t length, int time) {
        readChunk(held.substr(0, length), time, readings);
        held.erase(0, length);
    };
    auto const giveUp = [&](int time) {
        if (held.size() % recordCharacters != 0 || shiftedStart(held, 2) == 0)
            readChunk(held, time, readings);
        held.clear();
    };
    auto const fallSilent = [&](int pause) {
        if (!held.empty() && pause >= silenceMilliseconds) {
            isCut = isAsTheDeviceWrites(held);
            if (!isCut)
                giveUp(now + silenceMilliseconds);
        }
        now += pause;
    };
    for (auto const& [pause, bytes] : input.writes) {
        fallSilent(pause);
        if (isCut && !isAsTheDeviceWrites(held + bytes))
            held.clear();
        isCut = false;
        held += bytes;
        read(shiftedStart(held, 2 * recordCharacters), now);
        if (isAsTheDeviceWrites(held))
            read(held.size() / recordCharacters * recordCharacters, now);
        else if (held.size() > mostHeld)
            giveUp(now);
        else if (held.size() % recordCharacters == 0 && shiftedStart(held, 1) == 0)
            read(held.size(), now);
    }
    fallSilent(input.restMilliseconds);
    if (input.endsByPulling)
        giveUp(now);
    return readings;
}

} // namespace tensio::fuzz
