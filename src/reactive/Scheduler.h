#pragma once

#include "reactive/Subscription.h"

#include <chrono>
#include <functional>

namespace tensio {

using Seconds = std::chrono::duration<double>;

// Runs work later on the main thread. Ending the returned subscription takes the work back.
class Scheduler {
public:
    Scheduler() = default;
    Scheduler(Scheduler const&) = delete;
    Scheduler& operator=(Scheduler const&) = delete;
    virtual ~Scheduler() = default;

    // Time since some fixed moment; never steps back, whatever happens to the wall clock.
    virtual Seconds now() const = 0;
    virtual Subscription scheduleAfter(Seconds delay, std::function<void()> work) = 0;
};

} // namespace tensio
