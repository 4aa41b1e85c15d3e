#include "platform/RecordGatherer.h"

#include <algorithm>
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
    m_silenceTimer.end();

    auto const from = tail();
    m_held += bytes;
    if (auto const start = startOffBeat(from, 2 * m_shape.width))
        handOn(*start);
    auto const rest = m_held.size() % m_shape.width;
    if (m_shape.areRecords(m_held))
        handOn(m_held.size() - rest);
    else if (m_held.size() > maxHeldBytes)
        flush();
    else if (rest == 0 && !startOffBeat(tail(), 1))
        handOn(m_held.size());
    if (!m_held.empty())
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
    if (m_held.size() % m_shape.width == 0 && startOffBeat(tail(), 2))
        m_held.clear();
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

// Where records begin that reach to the end of what is held, but not at a whole number of records.
std::optional<std::size_t> RecordGatherer::startOffBeat(
    std::size_t from, std::size_t leastBytes) const
{
    for (auto start = from; start + leastBytes <= m_held.size(); ++start) {
        if (start % m_shape.width != 0
            && m_shape.areRecords(std::string_view(m_held).substr(start)))
            return start;
    }
    return std::nullopt;
}

// Where a start may be that fewer than two records have followed yet; earlier ones were found.
std::size_t RecordGatherer::tail() const
{
    return m_held.size() - std::min(m_held.size(), 2 * m_shape.width - 1);
}

} // namespace tensio
