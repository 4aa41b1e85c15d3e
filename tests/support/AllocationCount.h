#pragma once

#include <cstddef>

namespace tensio {

// What is allocated now by new, in a program that is linked with AllocationCount.cpp.
extern std::ptrdiff_t liveBlocks;
extern std::ptrdiff_t liveBytes;

} // namespace tensio
