#pragma once

#include <cstdio>
#include <string>

namespace tensio {

// What a long run reached.
inline void report(std::string const& figure)
{
    std::printf("figure: %s\n", figure.c_str());
}

} // namespace tensio
