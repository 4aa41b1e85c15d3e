#pragma once

#include <string>

namespace tensio {

// With that many decimals, rounded, and a point whatever the user's locale writes.
std::string formatFixed(float value, int decimals);

} // namespace tensio
