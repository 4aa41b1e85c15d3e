#pragma once

#include "reactive/Scheduler.h"

namespace tensio {

// The share of a frame that may go into work which can wait.
class TimeSlice {
public:
    // Is never over.
    TimeSlice() = default;
    // The clock must outlive the slice.
    TimeSlice(Scheduler const& clock, Seconds length)
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
