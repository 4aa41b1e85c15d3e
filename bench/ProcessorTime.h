#pragma once

#include <ctime>

namespace tensio {

// Of this thread, in seconds, so that other programs do not count.
inline double processorTime()
{
    timespec time {};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

} // namespace tensio
