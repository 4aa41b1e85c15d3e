#pragma once

#include "platform/RunLoop.h"

#include <algorithm>
#include <list>
#include <memory>
#include <optional>

namespace tensio {

// Virtual time: nothing happens until advance().
struct ManualRunLoop : RunLoop {
    Seconds now() const override { return m_now; }

    Subscription scheduleAfter(Seconds delay, std::function<void()> work) override
    {
        return add(delay, std::nullopt, std::move(work));
    }

    Subscription scheduleRepeating(Seconds interval, std::function<void()> tick) override
    {
        return add(interval, interval, std::move(tick));
    }

    void advance(Seconds duration)
    {
        auto const end = m_now + duration;
        while (auto const timer = nextDue(end)) {
            m_now = timer->due;
            if (timer->interval)
                timer->due += *timer->interval;
            else
                m_timers.remove(timer);
            timer->work();
        }
        m_now = end;
    }

    std::size_t liveTimers() const { return m_timers.size(); }

private:
    struct Timer {
        Seconds due;
        std::optional<Seconds> interval;
        std::function<void()> work;
    };

    Subscription add(Seconds delay, std::optional<Seconds> interval, std::function<void()> work)
    {
        auto const timer
            = std::make_shared<Timer>(Timer {m_now + delay, interval, std::move(work)});
        m_timers.push_back(timer);
        return Subscription([this, timer] { m_timers.remove(timer); });
    }

    std::shared_ptr<Timer> nextDue(Seconds end) const
    {
        // Sums of 0.05 s must meet a timer of 1.0 s in spite of rounding.
        constexpr Seconds tolerance {1e-9};
        auto const next
            = std::ranges::min_element(m_timers, {}, [](auto const& timer) { return timer->due; });
        bool const isDue = next != m_timers.end() && (*next)->due <= end + tolerance;
        return isDue ? *next : nullptr;
    }

    Seconds m_now {0.0};
    std::list<std::shared_ptr<Timer>> m_timers;
};

} // namespace tensio
