#pragma once

#include <array>

namespace tensio {

// Mark the selected measurements by position, at most MeasurementList::maxSelected of them.
constexpr std::array selectionMarks {"①", "②", "③"};

} // namespace tensio
