#pragma once

#include "reactive/Subscription.h"

#include <QObject>

#include <deque>
#include <functional>

namespace tensio {

// Delivers work from the main event loop, in the order it was posted. While a modal panel holds the
// queue nothing is delivered; nothing is lost either.
class MainQueue : public QObject {
    Q_OBJECT

public:
    void post(std::function<void()> work);
    // Until the subscription ends. Holds may overlap.
    Subscription hold();

private:
    void deliverLater();
    void deliver();

    std::deque<std::function<void()>> m_waiting;
    int m_holds = 0;
};

} // namespace tensio
