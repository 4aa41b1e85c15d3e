#pragma once

#include <filesystem>
#include <iterator>

namespace tensio {

// Of this process, as the system counts.
inline std::ptrdiff_t openDescriptors()
{
    std::filesystem::directory_iterator const descriptors("/proc/self/fd");
    return std::distance(begin(descriptors), end(descriptors));
}

} // namespace tensio
