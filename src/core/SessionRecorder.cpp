#include "core/SessionRecorder.h"

#include "core/TensioManager.h"

#include <algorithm>
#include <limits>

namespace tensio {

namespace {

constexpr Seconds interval {1.0};
// What one write takes stays short, also after the store has refused for long.
constexpr std::size_t maxPoints = 1200;
// While a session runs, a backlog is written so few parts at a time that the display does not
// stutter.
constexpr std::size_t maxParts = 4;

bool isAboveZero(float pressure)
{
    return pressure > 0.0f;
}

} // namespace

SessionRecorder::SessionRecorder(
    TensioManager& tensioManager, SessionStore& store, RunLoop& runLoop, Clock const& clock)
    : problem(store.problem())
    , canOpen(store.isOpen())
    , m_tensioManager(tensioManager)
    , m_store(store)
    , m_clock(clock)
{
    // That the store could not be opened has been reported already.
    if (!m_store.isOpen())
        return;
    m_subscriptions.push_back(m_tensioManager.isMeasuring.observeChanges(
        [this](bool isMeasuring) { isMeasuring ? start() : record(); }));
    m_subscriptions.push_back(m_tensioManager.sliceOfMeasurements.observeChanges(
        [this](Measurements const&) { record(); }));
    m_subscriptions.push_back(runLoop.scheduleRepeating(interval, [this] { record(); }));
    m_subscriptions.push_back(
        m_tensioManager.isSavedAsCsv.observeChanges([this](bool) { record(); }));
}

SessionRecorder::~SessionRecorder()
{
    recordParts(std::numeric_limits<std::size_t>::max());
}

void SessionRecorder::start()
{
    m_isRecording = true;
    m_start = m_clock.now();
    m_session = 0;
    m_isMarked = false;
    m_writtenMeasurements = 0;
    m_writtenPoints = 0;
    canOpen.setValue(false);
    pastSession.setValue(std::nullopt);
}

void SessionRecorder::record()
{
    // Once a session has ended, all at once: the next one clears the list.
    recordParts(
        m_tensioManager.isMeasuring.value() ? maxParts : std::numeric_limits<std::size_t>::max());
    markSaved();
}

void SessionRecorder::recordParts(std::size_t most)
{
    if (!m_isRecording)
        return;
    bool const isMeasuring = m_tensioManager.isMeasuring.value();
    // The next connection has cleared the list: what the store has refused until then is lost.
    if (!isMeasuring && m_isRefused && m_tensioManager.measurementList.measurements().empty()) {
        m_isRecording = false;
        return;
    }
    bool const isWritten = writeFinished(most) && writeRunning();
    if (isMeasuring)
        return;
    m_isRecording = !isWritten;
    if (isWritten && m_session != 0)
        m_store.end(m_session, m_clock.now());
    canOpen.setValue(isWritten || m_tensioManager.isSavedAsCsv.value());
}

void SessionRecorder::report(bool isTaken)
{
    // What the opening found stays until a change has been refused.
    if (isTaken && !m_isRefused)
        return;
    m_isRefused = !isTaken;
    auto const newProblem = isTaken ? StoreProblem::None : m_store.problem();
    if (newProblem != problem.value())
        problem.setValue(newProblem);
}

bool SessionRecorder::writeFinished(std::size_t most)
{
    auto const& finished = m_tensioManager.measurementList.measurements();
    for (; m_writtenMeasurements < finished.size() && most > 0; --most) {
        auto const& each = *finished[m_writtenMeasurements];
        bool const isRest = each.pressurePoints->size() <= m_writtenPoints + maxPoints;
        if (!write({each.number, *each.bestPressure, *each.targetPressure, *each.timeStamp, isRest,
                       m_writtenPoints, {}},
                *each.pressurePoints))
            return false;
        if (!isRest)
            continue;
        ++m_writtenMeasurements;
        m_writtenPoints = 0;
    }
    return true;
}

bool SessionRecorder::writeRunning()
{
    // In order: not before those that are finished.
    if (m_writtenMeasurements < m_tensioManager.measurementList.measurements().size())
        return true;
    auto const& running = m_tensioManager.measurement;
    bool const isFull = m_writtenMeasurements >= MeasurementList::MEASUREMENTS_MAX_COUNT;
    // With a time stamp it has just been finished, and stands in the list.
    if (!running || running->timeStamp || isFull)
        return true;
    auto const& points = *running->pressurePoints;
    bool const isMeaningful = m_writtenPoints > 0 || std::ranges::any_of(points, isAboveZero);
    if (!isMeaningful || points.size() == m_writtenPoints)
        return true;
    return write({running->number, m_tensioManager.maxPressure.value(),
                     m_tensioManager.effectiveTarget(), m_clock.now(), false, m_writtenPoints, {}},
        points);
}

bool SessionRecorder::write(MeasurementPart part, std::vector<float> const& points)
{
    // A list that was not filled by measuring may hold fewer points than have been written.
    auto const rest = std::span(points).subspan(std::min(m_writtenPoints, points.size()));
    part.points = rest.first(std::min(maxPoints, rest.size()));
    // Not begun before: name and target are known only once the port has opened.
    bool const isNew = m_session == 0;
    if (isNew)
        m_session = m_store.begin(head(), part).value_or(0);
    bool const isTaken = isNew ? m_session != 0 : m_store.write(m_session, part);
    report(isTaken);
    if (isTaken)
        m_writtenPoints += part.points.size();
    return isTaken;
}

SessionHead SessionRecorder::head() const
{
    return {m_start, m_tensioManager.username.value(), m_tensioManager.targetPressure.value(),
        m_tensioManager.targetPressurePercent.value(),
        m_tensioManager.serialPortManager.isSimulated.value()};
}

void SessionRecorder::markSaved()
{
    if (m_session != 0 && !m_isMarked && m_tensioManager.isSavedAsCsv.value())
        m_isMarked = m_store.markSaved(m_session);
}

bool SessionRecorder::open(SessionId session)
{
    auto const stored
        = canOpen.value() ? m_store.load(session, StoredPoints::Loaded) : std::nullopt;
    if (!stored)
        return false;
    m_isRecording = false;
    m_session = session;
    m_isMarked = false;
    m_tensioManager.restoreSession(*stored);
    pastSession.setValue(stored->summary);
    return true;
}

} // namespace tensio
