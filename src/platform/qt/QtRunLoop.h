#pragma once

#include "platform/RunLoop.h"

namespace tensio {

class MainQueue;

// Timers of the main event loop, their ticks delivered through the queue.
class QtRunLoop : public RunLoop {
public:
    // The queue must outlive the timers, too.
    explicit QtRunLoop(MainQueue& queue);

    Seconds now() const override;
    Subscription scheduleAfter(Seconds delay, std::function<void()> work) override;
    Subscription scheduleRepeating(Seconds interval, std::function<void()> tick) override;

private:
    MainQueue& m_queue;
};

} // namespace tensio
