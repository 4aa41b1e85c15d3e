#include "platform/qt/QtRunLoop.h"

#include "platform/qt/MainQueue.h"

#include <QTimer>

#include <cmath>
#include <memory>
#include <utility>

namespace tensio {

namespace {

struct Timer {
    QTimer timer;
    std::function<void()> work;
    bool isTickWaiting = false;
};

Subscription start(MainQueue& queue, Seconds interval, bool repeats, std::function<void()> work)
{
    auto const timer = std::make_shared<Timer>();
    timer->work = std::move(work);
    timer->timer.setTimerType(Qt::PreciseTimer);
    timer->timer.setSingleShot(!repeats);
    timer->timer.setInterval(static_cast<int>(std::lround(interval.count() * 1000.0)));
    QObject::connect(
        &timer->timer, &QTimer::timeout, &timer->timer, [&queue, weakTimer = std::weak_ptr(timer)] {
            auto const due = weakTimer.lock();
            // One tick stands for all that were missed during a hold.
            if (!due || std::exchange(due->isTickWaiting, true))
                return;
            queue.post([weakTimer] {
                if (auto const owner = weakTimer.lock()) {
                    owner->isTickWaiting = false;
                    owner->work();
                }
            });
        });
    timer->timer.start();
    // The subscription alone owns the timer, so that a tick posted before its end does nothing.
    return Subscription([timer] { timer->timer.stop(); });
}

} // namespace

QtRunLoop::QtRunLoop(MainQueue& queue)
    : m_queue(queue)
{
    willPause = queue.willHold;
}

Seconds QtRunLoop::now() const
{
    return std::chrono::steady_clock::now().time_since_epoch();
}

Subscription QtRunLoop::scheduleAfter(Seconds delay, std::function<void()> work)
{
    return start(m_queue, delay, false, std::move(work));
}

Subscription QtRunLoop::scheduleRepeating(Seconds interval, std::function<void()> tick)
{
    return start(m_queue, interval, true, std::move(tick));
}

} // namespace tensio
