#pragma once

#include "reactive/Interface.h"
#include "reactive/Subscription.h"

#include <chrono>
#include <functional>

namespace tensio {

using Seconds = std::chrono::duration<double>;

// Runs work later on the main thread.
class Scheduler : public Interface {
public:
    // Time since some fixed moment; unlike the wall clock it never steps back.
    virtual Seconds now() const = 0;
    // Runs the work once, never inside this call. Ending the subscription cancels it.
    virtual Subscription scheduleAfter(Seconds delay, std::function<void()> work) = 0;
};

} // namespace tensio
