#pragma once

#include "reactive/Scheduler.h"

namespace tensio {

// The time left in this frame for work that can be spread over several.
class FrameBudget {
public:
    // Without end.
    FrameBudget() = default;
    // The clock must outlive the budget.
    FrameBudget(Scheduler const& clock, Seconds length)
        : m_clock(&clock)
        , m_end(clock.now() + length)
    {
    }

    bool isOver() const { return m_clock && m_clock->now() >= m_end; }

private:
    Scheduler const* m_clock = nullptr;
    Seconds m_end {};
};

} // namespace tensio
