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

std::shared_ptr<Measurement> measurementOf(StoredMeasurement const& stored)
{
    auto measurement = std::make_shared<Measurement>(stored.number);
    measurement->bestPressure = stored.best;
    measurement->targetPressure = stored.target;
    measurement->timeStamp = stored.timeStamp;
    measurement->pressurePoints = stored.points;
    return measurement;
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
    // Where the store could not be opened, the user knows already that nothing is kept.
    if (!m_store.isOpen())
        return;
    m_subscriptions.push_back(m_tensioManager.isMeasuring.observeChanges(
        [this](bool isMeasuring) { isMeasuring ? start() : proceed(); }));
    m_subscriptions.push_back(m_tensioManager.sliceOfMeasurements.observeChanges(
        [this](Measurements const&) { proceed(); }));
    m_subscriptions.push_back(runLoop.scheduleRepeating(interval, [this] { proceed(); }));
    m_subscriptions.push_back(m_tensioManager.isSavedAsCsv.observeChanges(
        [this](bool isSaved) { isSaved ? markSaved() : void(); }));
}

SessionRecorder::~SessionRecorder()
{
    proceed(std::numeric_limits<std::size_t>::max());
}

void SessionRecorder::start()
{
    m_isRecording = true;
    m_start = m_clock.now();
    m_session = 0;
    m_writtenMeasurements = 0;
    m_writtenPoints = 0;
    canOpen.setValue(false);
    pastSession.setValue(std::nullopt);
}

void SessionRecorder::proceed()
{
    // Once a session has ended, all at once: the next one clears the list.
    proceed(
        m_tensioManager.isMeasuring.value() ? maxParts : std::numeric_limits<std::size_t>::max());
}

void SessionRecorder::proceed(std::size_t partCount)
{
    if (!m_isRecording)
        return;
    bool const isWritten = writeFinished(partCount) && writeRunning();
    report(isWritten);
    if (m_tensioManager.isMeasuring.value())
        return;
    m_isRecording = !isWritten;
    if (isWritten && m_session != 0)
        m_store.end(m_session, m_clock.now());
    canOpen.setValue(isWritten || m_tensioManager.isSavedAsCsv.value());
}

void SessionRecorder::report(bool isWritten)
{
    // What the opening found stays until a change has been refused.
    if (isWritten && !m_isRefused)
        return;
    m_isRefused = !isWritten;
    auto const newProblem = isWritten ? StoreProblem::None : m_store.problem();
    if (newProblem != problem.value())
        problem.setValue(newProblem);
}

bool SessionRecorder::writeFinished(std::size_t partCount)
{
    auto const& finished = m_tensioManager.measurementList.measurements();
    for (; m_writtenMeasurements < finished.size() && partCount > 0; --partCount) {
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
    auto const& running = m_tensioManager.measurement;
    bool const isFull = m_writtenMeasurements >= MeasurementList::MEASUREMENTS_MAX_COUNT;
    if (m_writtenMeasurements < m_tensioManager.measurementList.measurements().size())
        return true;
    // While it is being finished it stands in both places.
    if (!running || running->timeStamp || isFull)
        return true;
    auto const& points = *running->pressurePoints;
    bool const isMeaningful = m_writtenPoints > 0 || std::ranges::any_of(points, isAboveZero);
    if (!isMeaningful || points.size() == m_writtenPoints)
        return true;
    return write(
        {running->number, m_tensioManager.maxPressure.value(),
            m_tensioManager.targetPressure.value() * m_tensioManager.targetPressurePercent.value(),
            m_clock.now(), false, m_writtenPoints, {}},
        points);
}

bool SessionRecorder::write(MeasurementPart part, std::vector<float> const& points)
{
    // A list that was not filled by measuring may hold fewer points than have been written.
    auto const rest = std::span(points).subspan(std::min(m_writtenPoints, points.size()));
    part.points = rest.first(std::min(maxPoints, rest.size()));
    if (!isSessionBegun() || !m_store.write(m_session, part))
        return false;
    m_writtenPoints += part.points.size();
    return true;
}

bool SessionRecorder::isSessionBegun()
{
    // Not before: name and target are known only once the port has opened.
    if (m_session == 0)
        m_session = m_store
                        .begin({m_start, m_tensioManager.username.value(),
                            m_tensioManager.targetPressure.value(),
                            m_tensioManager.targetPressurePercent.value(),
                            m_tensioManager.serialPortManager.isSimulated.value()})
                        .value_or(0);
    return m_session != 0;
}

void SessionRecorder::markSaved()
{
    if (m_session != 0)
        m_store.markSaved(m_session);
    proceed();
}

bool SessionRecorder::open(SessionId session)
{
    auto const stored = m_store.load(session);
    if (!stored || !canOpen.value())
        return false;
    Measurements measurements;
    std::ranges::transform(stored->measurements, std::back_inserter(measurements), measurementOf);
    m_isRecording = false;
    m_session = session;
    m_tensioManager.restoreSession(stored->summary.name, measurements, stored->summary.isSimulated);
    pastSession.setValue(stored->summary);
    return true;
}

} // namespace tensio
