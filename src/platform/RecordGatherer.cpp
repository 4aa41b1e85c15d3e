#include "platform/RecordGatherer.h"

#include <algorithm>
#include <utility>

namespace tensio {

RecordGatherer::RecordGatherer(Scheduler& scheduler, RecordFormat format, Deliver deliver)
    : m_scheduler(scheduler)
    , m_format(format)
    , m_deliver(std::move(deliver))
{
}

void RecordGatherer::receive(std::string_view bytes)
{
    // An incomplete record whose rest is lost must not spoil the burst that follows.
    if (m_isCutBySilence && !m_format.looksLikeRecords(m_buffer + std::string(bytes)))
        flush();
    stopWaiting();

    auto const from = unexaminedFrom();
    m_buffer += bytes;
    // Whatever stands before two certain records belongs to none of them.
    if (auto const start = m_format.findShiftedStart(m_buffer, from, 2 * m_format.width))
        deliver(*start);
    deliverComplete();
    if (!m_buffer.empty())
        m_silenceTimer = m_scheduler.scheduleAfter(silence, [this] { onSilence(); });
}

void RecordGatherer::deliverComplete()
{
    if (m_format.looksLikeRecords(m_buffer))
        deliver(m_buffer.size() - m_buffer.size() % m_format.width);
    else if (m_buffer.size() > maxBufferSize)
        flush();
    else if (m_format.isWholeNumberOfRecords(m_buffer) && !endsInShiftedRecords(1))
        deliver(m_buffer.size());
}

void RecordGatherer::onSilence()
{
    m_isCutBySilence = m_format.looksLikeRecords(m_buffer);
    if (!m_isCutBySilence)
        flush();
}

void RecordGatherer::flush()
{
    stopWaiting();
    // A buffer of this length would pass for whole records, and the shifted ones be read wrong. A
    // single sign at its end may be a filler.
    if (m_format.isWholeNumberOfRecords(m_buffer) && endsInShiftedRecords(2))
        m_buffer.clear();
    deliver(m_buffer.size());
}

void RecordGatherer::discard()
{
    stopWaiting();
    m_buffer.clear();
}

void RecordGatherer::stopWaiting()
{
    m_silenceTimer.end();
    m_isCutBySilence = false;
}

void RecordGatherer::deliver(std::size_t length)
{
    auto const chunk = m_buffer.substr(0, length);
    m_buffer.erase(0, length);
    if (!chunk.empty())
        m_deliver(chunk);
}

bool RecordGatherer::endsInShiftedRecords(std::size_t minBytes) const
{
    return m_format.findShiftedStart(m_buffer, unexaminedFrom(), minBytes).has_value();
}

// receive() has examined earlier offsets: the bytes of two records were there.
std::size_t RecordGatherer::unexaminedFrom() const
{
    return m_buffer.size() - std::min(m_buffer.size(), 2 * m_format.width - 1);
}

} // namespace tensio
