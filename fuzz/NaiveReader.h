#pragma once

#include "FuzzInput.h"

#include <optional>
#include <string_view>
#include <vector>

namespace tensio::fuzz {

// A pressure (kPa) and when it was read.
struct Reading {
    int milliseconds = 0;
    float pressure = 0.0f;
};

// What must be read of the writes. Written from the description of the device's records alone, as
// plainly as possible, and sharing nothing with the program.
std::vector<Reading> readNaively(FuzzInput const& input);

// A text of at most three characters as a number.
std::optional<float> naiveNumber(std::string_view text);

} // namespace tensio::fuzz
