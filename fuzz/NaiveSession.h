#pragma once

#include "NaiveReader.h"

#include <string>
#include <vector>

namespace tensio::fuzz {

struct NaiveMeasurement {
    int number = 0;
    float best = 0.0f;
    std::vector<float> points;
};

// The bursts among the readings in which some pressure was above 0.
std::vector<NaiveMeasurement> cutNaively(std::vector<Reading> const& readings);

// The text of a CSV file of them all, and of the first three as a selection.
std::u16string naiveCsv(std::vector<NaiveMeasurement> const& measurements, float effectiveTarget,
    std::u16string const& head);
std::u16string naiveSelectedCsv(
    std::vector<NaiveMeasurement> const& measurements, std::u16string const& head);

} // namespace tensio::fuzz
