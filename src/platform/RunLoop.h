#pragma once

#include "reactive/Scheduler.h"

namespace tensio {

// The timers of the main thread. While a modal panel or alert is open nothing fires; a timer that
// fell due meanwhile fires once when it closes.
class RunLoop : public Scheduler {
public:
    // Fires every interval, which is positive, without drift until the subscription ends.
    virtual Subscription scheduleRepeating(Seconds interval, std::function<void()> tick) = 0;
};

} // namespace tensio
