#include "platform/RecordGatherer.h"

#include <utility>

namespace tensio {

RecordGatherer::RecordGatherer(Scheduler& scheduler, RecordShape shape, Deliver deliver)
    : m_scheduler(scheduler)
    , m_shape(shape)
    , m_deliver(std::move(deliver))
{
}

void RecordGatherer::receive(std::string_view bytes)
{
    // A beginning whose end got lost must not spoil the burst that follows.
    if (m_isCutBySilence && !m_shape.areRecords(m_held + std::string(bytes)))
        flush();
    m_isCutBySilence = false;
    m_held += bytes;
    m_silenceTimer.end();
    auto const rest = m_held.size() % m_shape.width;
    if (rest == 0 || m_held.size() > maxHeldBytes) {
        flush();
        return;
    }
    if (m_shape.areRecords(m_held))
        handOn(m_held.size() - rest);
    m_silenceTimer = m_scheduler.scheduleAfter(silence, [this] { fallSilent(); });
}

void RecordGatherer::fallSilent()
{
    m_isCutBySilence = m_shape.areRecords(m_held);
    if (!m_isCutBySilence)
        flush();
}

void RecordGatherer::flush()
{
    m_silenceTimer.end();
    m_isCutBySilence = false;
    handOn(m_held.size());
}

void RecordGatherer::discard()
{
    m_silenceTimer.end();
    m_isCutBySilence = false;
    m_held.clear();
}

void RecordGatherer::handOn(std::size_t length)
{
    auto const chunk = m_held.substr(0, length);
    m_held.erase(0, length);
    if (!chunk.empty())
        m_deliver(chunk);
}

} // namespace tensio
