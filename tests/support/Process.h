#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <unistd.h>

namespace tensio {

// Of this process, as the system counts.
inline std::ptrdiff_t openDescriptors()
{
    std::filesystem::directory_iterator const descriptors("/proc/self/fd");
    return std::distance(begin(descriptors), end(descriptors));
}

inline long residentKilobytes()
{
    long total = 0;
    long resident = 0;
    std::ifstream("/proc/self/statm") >> total >> resident;
    return resident * sysconf(_SC_PAGESIZE) / 1024;
}

} // namespace tensio
