#pragma once

#include "reactive/Interface.h"

#include <chrono>

namespace tensio {

using Date = std::chrono::system_clock::time_point;

// Wall-clock time, which may step back or forward. For intervals use the run loop.
class Clock : public Interface {
public:
    virtual Date now() const = 0;
};

class SystemClock : public Clock {
public:
    Date now() const override { return std::chrono::system_clock::now(); }
};

} // namespace tensio
