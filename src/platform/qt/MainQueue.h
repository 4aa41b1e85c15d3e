#pragma once

#include "reactive/Signal.h"
#include "reactive/Subscription.h"

#include <QObject>

#include <deque>
#include <functional>

namespace tensio {

// Runs work from the main event loop, in the order it was posted. While a modal panel holds the
// queue nothing runs; what is posted meanwhile runs afterwards.
class MainQueue : public QObject {
    Q_OBJECT

public:
    // Sent before each hold begins.
    Signal<Nothing>::Pipe willHold {Signal<Nothing>::pipe()};

    void post(std::function<void()> work);
    // Nothing runs until the subscription ends. Holds may overlap, and may outlive the queue.
    Subscription hold();

private:
    void deliverLater();
    void deliver();

    std::deque<std::function<void()>> m_waiting;
    int m_holds = 0;
};

} // namespace tensio
