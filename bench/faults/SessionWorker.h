#pragma once

#include <cstddef>

namespace tensio {

// What the session worker has recorded when it is killed.
struct Progress {
    std::size_t finished;
    // Points of the running measurement.
    std::size_t running;
};

// The pressure at that place of a burst, kPa.
inline double workerPressure(int point)
{
    return 1.0 + point % 300;
}

} // namespace tensio
