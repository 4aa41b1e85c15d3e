#include "platform/RecordGatherer.h"

#include <utility>

namespace tensio {

RecordGatherer::RecordGatherer(Scheduler& scheduler, std::size_t recordWidth, Deliver deliver)
    : m_scheduler(scheduler)
    , m_recordWidth(recordWidth)
    , m_deliver(std::move(deliver))
{
}

void RecordGatherer::receive(std::string_view bytes)
{
    m_held += bytes;
    m_silenceTimer.end();
    if (m_held.size() % m_recordWidth == 0 || m_held.size() > maxHeldBytes)
        flush();
    else
        m_silenceTimer = m_scheduler.scheduleAfter(silence, [this] { flush(); });
}

void RecordGatherer::flush()
{
    m_silenceTimer.end();
    if (auto const chunk = std::exchange(m_held, {}); !chunk.empty())
        m_deliver(chunk);
}

void RecordGatherer::discard()
{
    m_silenceTimer.end();
    m_held.clear();
}

} // namespace tensio
