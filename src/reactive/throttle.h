#pragma once

#include "reactive/MutableProperty.h"
#include "reactive/Scheduler.h"

#include <functional>
#include <memory>
#include <optional>
#include <utility>

namespace tensio {

// Passes at most one value per interval: at once when the interval since the last one is over,
// otherwise the newest when it ends. Owned by shared_ptr; the scheduler must outlive it.
template<typename T>
class Throttle : public std::enable_shared_from_this<Throttle<T>> {
public:
    Throttle(Seconds interval, Scheduler& scheduler, std::function<void(T const&)> observer)
        : m_interval(interval)
        , m_scheduler(scheduler)
        , m_observer(std::move(observer))
    {
    }

    void receive(T const& value)
    {
        auto const now = m_scheduler.now();
        if (!m_waiting && (!m_lastPassed || now - *m_lastPassed >= m_interval)) {
            pass(value);
            return;
        }
        if (!std::exchange(m_waiting, value))
            m_timer = m_scheduler.scheduleAfter(
                *m_lastPassed + m_interval - now, [weakSelf = this->weak_from_this()] {
                    if (auto const self = weakSelf.lock())
                        self->pass(*std::exchange(self->m_waiting, std::nullopt));
                });
    }

private:
    void pass(T const& value)
    {
        m_lastPassed = m_scheduler.now();
        m_observer(value);
    }

    Seconds m_interval;
    Scheduler& m_scheduler;
    std::function<void(T const&)> m_observer;
    std::optional<Seconds> m_lastPassed;
    std::optional<T> m_waiting;
    Subscription m_timer;
};

// Later values of the source, through a Throttle. The source and the scheduler must outlive the
// subscription.
template<typename T>
Subscription throttle(MutableProperty<T> const& source, Seconds interval, Scheduler& scheduler,
    std::function<void(T const&)> observer)
{
    auto const shared = std::make_shared<Throttle<T>>(interval, scheduler, std::move(observer));
    return source.observeChanges([shared](T const& value) { shared->receive(value); });
}

} // namespace tensio
