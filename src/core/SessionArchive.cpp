#include "core/SessionArchive.h"

#include "core/TensioManager.h"

#include <limits>

namespace tensio {

namespace {

constexpr Seconds interval {1.0};
// While a session runs, a backlog is written so few parts at a time that the display does not
// stutter.
constexpr std::size_t maxParts = 4;
constexpr auto allParts = std::numeric_limits<std::size_t>::max();

} // namespace

SessionArchive::SessionArchive(
    TensioManager& tensioManager, SessionStore& store, RunLoop& runLoop, Clock const& clock)
    : problem(store.problem())
    , canOpen(store.isOpen())
    , unsaved(store.unsavedSession())
    , m_tensioManager(tensioManager)
    , m_store(store)
    , m_clock(clock)
{
    // That the store could not be opened has been reported already.
    if (!m_store.isOpen())
        return;
    m_subscriptions += m_tensioManager.isMeasuring.observeChanges(
        [this](bool isMeasuring) { isMeasuring ? start() : measurementFinished(); });
    m_subscriptions
        += m_tensioManager.sliceOfMeasurements.observeChanges([this](Measurements const& slice) {
               // An empty list is that of the next session.
               if (!slice.empty())
                   measurementFinished();
           });
    m_subscriptions += runLoop.scheduleRepeating(interval, [this] { record(); });
    // Taken back at the next connection, and when a session is opened.
    m_subscriptions += m_tensioManager.isSavedAsCsv.observeChanges([this](bool isSaved) {
        m_isMarkDue = isSaved;
        if (isSaved)
            record();
    });
}

SessionArchive::~SessionArchive()
{
    if (m_writer)
        m_writer->catchUp(allParts, m_clock.now());
}

void SessionArchive::start()
{
    m_writer.emplace(m_tensioManager, m_store, m_clock.now());
    m_session = 0;
    canOpen.prepare(false);
    shown.prepare(std::nullopt);
    unsaved.prepare(std::nullopt);
    canOpen.publish();
    shown.publish();
    unsaved.publish();
    updateProblem(true);
}

void SessionArchive::measurementFinished()
{
    if (!m_writer)
        return;
    record();
    // It waits for the disk, as nothing may while records come.
    if (!m_tensioManager.isRecording.value() && !m_store.checkpoint())
        updateProblem(false);
}

void SessionArchive::record()
{
    if (!m_writer && !m_isMarkDue && m_dueDismissals.empty())
        return;
    bool const isAccepted = write() && markDue() && dismissDue();
    // The store goes on at once, but what was in it is gone.
    if (!isAccepted || problem.value() != StoreProblem::Vanished)
        updateProblem(isAccepted);
    updateCanOpen();
}

bool SessionArchive::write()
{
    if (!m_writer)
        return true;
    bool const isMeasuring = m_tensioManager.isMeasuring.value();
    bool const isWritten = m_writer->catchUp(isMeasuring ? maxParts : allParts, m_clock.now());
    m_session = m_writer->session();
    if (isMeasuring || !isWritten)
        return isWritten;
    bool const isEnded = m_writer->end(m_clock.now());
    if (isEnded)
        m_writer.reset();
    return isEnded;
}

bool SessionArchive::markDue()
{
    if (m_isMarkDue && m_session != 0)
        m_isMarkDue = !m_store.markSaved(m_session);
    return !m_isMarkDue || m_session == 0;
}

bool SessionArchive::dismissDue()
{
    std::erase_if(m_dueDismissals, [&](SessionId session) { return m_store.dismiss(session); });
    return m_dueDismissals.empty();
}

void SessionArchive::updateProblem(bool isAccepted)
{
    // What the opening found stays until a change has been refused.
    if (isAccepted && !m_isRefused)
        return;
    m_isRefused = !isAccepted;
    auto const newProblem = isAccepted ? StoreProblem::None : m_store.problem();
    if (newProblem != problem.value())
        problem.setValue(newProblem);
}

void SessionArchive::updateCanOpen()
{
    bool const isKept
        = !m_writer || m_writer->hasAllFinished() || m_tensioManager.isSavedAsCsv.value();
    bool const isPossible = isKept && !m_tensioManager.isMeasuring.value();
    if (isPossible != canOpen.value())
        canOpen.setValue(isPossible);
}

bool SessionArchive::open(SessionId session)
{
    auto const stored
        = canOpen.value() ? m_store.load(session, StoredPoints::Loaded) : std::nullopt;
    if (!stored || stored->measurements.empty())
        return false;
    m_writer.reset();
    m_session = session;
    m_dueDismissals.push_back(session);
    m_isShownWhole = stored->isComplete;
    shown.prepare(stored->summary);
    unsaved.prepare(std::nullopt);
    m_tensioManager.restoreSession(*stored);
    shown.publish();
    unsaved.publish();
    record();
    return true;
}

void SessionArchive::dismissUnsaved()
{
    if (auto const session = unsaved.value()) {
        m_dueDismissals.push_back(session->id);
        unsaved.setValue(std::nullopt);
        record();
    }
}

void SessionArchive::markSaved(SessionId session)
{
    if (!m_store.markSaved(session))
        updateProblem(false);
    else if (unsaved.value())
        unsaved.setValue(m_store.unsavedSession());
}

StoreProblem SessionArchive::remove(std::vector<SessionId> const& sessions)
{
    return removed(m_store.remove(sessions));
}

StoreProblem SessionArchive::removeAll()
{
    return removed(m_store.removeAll());
}

StoreProblem SessionArchive::removed(bool isDone)
{
    if (unsaved.value())
        unsaved.setValue(m_store.unsavedSession());
    return isDone ? StoreProblem::None : m_store.problem();
}

} // namespace tensio
