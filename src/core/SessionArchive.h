#pragma once

#include "core/SessionWriter.h"
#include "reactive/MutableProperty.h"

namespace tensio {

class Clock;
class RunLoop;

// Keeps every session on the disk, and alone changes what is there: a finished measurement is
// written at once, a running one every second. What the store refuses is offered to it again a
// second later, and the measurement goes on meanwhile.
class SessionArchive {
public:
    SessionArchive(
        TensioManager& tensioManager, SessionStore& store, RunLoop& runLoop, Clock const& clock);
    SessionArchive(SessionArchive const&) = delete;
    SessionArchive& operator=(SessionArchive const&) = delete;
    ~SessionArchive();

    // What the opening of the store found, or why the latest change was refused: None again once
    // one is accepted (Vanished stays), and when a session starts. Published only when it changes.
    MutableProperty<StoreProblem> problem;
    // No session runs, and all that the window shows is in the store or in a CSV file.
    MutableProperty<bool> canOpen;
    // The stored session that the window shows; none while it shows that of the latest connection.
    MutableProperty<std::optional<SessionSummary>> shown {std::nullopt};
    // Damage hides nothing of it.
    bool isShownWhole() const { return m_isShownWhole; }
    // The session to be offered: the newest, if it is neither saved nor dismissed. None once a
    // session has started or was opened.
    MutableProperty<std::optional<SessionSummary>> unsaved;

    // Puts a stored session into the window and dismisses it; false when no measurement of it can
    // be read or canOpen is false.
    bool open(SessionId session);
    // The session is not offered again.
    void dismissUnsaved();
    // A CSV file of all its measurements has been written.
    void markSaved(SessionId session);
    // None when nothing of them is left, or why they stay.
    StoreProblem remove(std::vector<SessionId> const& sessions);
    StoreProblem removeAll();

    SessionPage sessions(std::optional<SessionSummary> const& last, std::size_t most)
    {
        return m_store.sessions(last, most);
    }
    std::optional<StoredSession> load(SessionId session, StoredPoints points)
    {
        return m_store.load(session, points);
    }

    // The whole store to a file, and the sessions of such a file that are not there yet; while
    // canOpen is true, as the store refuses changes meanwhile. The archive must outlive both.
    std::unique_ptr<SessionTransfer> backUp(std::string const& path)
    {
        return m_store.backUp(path);
    }
    std::unique_ptr<SessionTransfer> restore(std::string const& path)
    {
        return m_store.restore(path);
    }

private:
    void start();
    void measurementFinished();
    void record();
    bool write();
    bool markDue();
    bool dismissDue();
    void updateProblem(bool isAccepted);
    void updateCanOpen();
    StoreProblem removed(bool isDone);

    TensioManager& m_tensioManager;
    SessionStore& m_store;
    Clock const& m_clock;

    // None: nothing has to be written.
    std::optional<SessionWriter> m_writer;
    // What the window shows; 0 while nothing of it is stored.
    SessionId m_session = 0;
    bool m_isShownWhole = true;
    // The store has to be told that a CSV file of it has been written.
    bool m_isMarkDue = false;
    // The sessions that the store has to dismiss.
    std::vector<SessionId> m_dueDismissals;
    bool m_isRefused = false;
    Subscriptions m_subscriptions;
};

} // namespace tensio
