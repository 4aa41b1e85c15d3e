#include "device-simulator/Simulator.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <utility>

using namespace Qt::StringLiterals;

namespace tensio {

namespace {

std::chrono::nanoseconds monotonic()
{
    return std::chrono::steady_clock::now().time_since_epoch();
}

double secondsNow()
{
    return std::chrono::duration<double>(monotonic()).count();
}

} // namespace

Simulator::Simulator(SimulatorOptions options)
    : m_options(std::move(options))
    , m_terminal(std::make_unique<Terminal>(u"SLAB_USBtoUART-simulator"_s))
    , m_stamps(m_options.stampsFile)
{
    if (!m_options.stampsFile.isEmpty())
        m_stamps.open(QIODevice::WriteOnly | QIODevice::Unbuffered);
    m_next.setSingleShot(true);
    m_next.setTimerType(Qt::PreciseTimer);
    connect(&m_readerWatch, &QTimer::timeout, this, &Simulator::watchReader);
    connect(&m_next, &QTimer::timeout, this, &Simulator::writeNext);
    m_readerWatch.start(50);
}

void Simulator::watchReader()
{
    bool const hasReader = m_terminal->hasReader();
    if (std::exchange(m_hadReader, hasReader) == hasReader)
        return;
    if (hasReader)
        begin();
    else
        m_next.stop();
}

void Simulator::begin()
{
    m_story = {};
    m_ahead.assign(m_options.recordedStream.begin(), m_options.recordedStream.end());
    m_due = secondsNow();
    if (m_options.pullAfterSeconds)
        QTimer::singleShot(*m_options.pullAfterSeconds * 1000, this, &Simulator::pullCable);
    scheduleNext();
}

void Simulator::scheduleNext()
{
    if (m_ahead.empty()) {
        if (m_options.playsOnce) {
            // A reader gets the last record only while there is a terminal, and the silence after
            // it ends a measurement.
            QTimer::singleShot(3000, this, [this] { onFinished(); });
            return;
        }
        auto const& recorded = m_options.recordedStream;
        auto const more = recorded.empty() ? m_story.nextBurst() : recorded;
        m_ahead.assign(more.begin(), more.end());
    }
    // From the due time of the write before, not from its actual time, so that the device's clock
    // does not drift.
    m_due += m_ahead.front().pauseSeconds;
    m_next.start(static_cast<int>(std::lround(std::max(0.0, m_due - secondsNow()) * 1000.0)));
}

void Simulator::writeNext()
{
    auto const next = std::move(m_ahead.front());
    m_ahead.pop_front();
    stamp();
    m_terminal->write(next.bytes);
    scheduleNext();
}

void Simulator::stamp()
{
    if (m_stamps.isOpen())
        m_stamps.write(QByteArray::number(monotonic().count()) + '\n');
}

void Simulator::pullCable()
{
    m_readerWatch.stop();
    m_next.stop();
    m_terminal.reset();
    onFinished();
}

} // namespace tensio
