#pragma once

#include <csignal>
#include <sys/resource.h>

namespace tensio {

// A disk that is full once a file has grown to the size.
inline void limitFileSize(rlim_t bytes)
{
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit const limit {bytes, RLIM_INFINITY};
    setrlimit(RLIMIT_FSIZE, &limit);
}

} // namespace tensio
