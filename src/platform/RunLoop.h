#pragma once

#include "reactive/Scheduler.h"
#include "reactive/Signal.h"

namespace tensio {

// The timers of the main thread. While a modal panel or alert is open nothing fires; a timer that
// fell due meanwhile fires once when it closes.
class RunLoop : public Scheduler {
public:
    // Sent before a modal panel or alert stops the timers, and before a picture of the main window
    // is taken: who draws by a timer draws what is due.
    Signal<Nothing>::Pipe willPause {Signal<Nothing>::pipe()};

    // Fires every interval, which is positive, without drift until the subscription ends.
    virtual Subscription scheduleRepeating(Seconds interval, std::function<void()> tick) = 0;
};

} // namespace tensio
