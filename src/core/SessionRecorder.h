#pragma once

#include "platform/SessionStore.h"
#include "reactive/MutableProperty.h"

namespace tensio {

class Clock;
class RunLoop;
class TensioManager;

// Keeps every session on the disk: a finished measurement at once, a running one every second, once
// a pressure above 0 has come. What the store refuses is offered to it again a second later, and
// the measurement goes on meanwhile.
class SessionRecorder {
public:
    // Everything handed in must outlive the recorder.
    SessionRecorder(
        TensioManager& tensioManager, SessionStore& store, RunLoop& runLoop, Clock const& clock);
    SessionRecorder(SessionRecorder const&) = delete;
    SessionRecorder& operator=(SessionRecorder const&) = delete;
    ~SessionRecorder();

    // What the opening of the store found, or why nothing is stored now. Assigned only when it
    // changes; None again once the store has taken what it refused.
    MutableProperty<StoreProblem> problem;
    // No session runs, and all that the window shows is in the store or in a CSV file.
    MutableProperty<bool> canOpen;
    // The stored session that the window shows; none while it shows that of the latest connection.
    MutableProperty<std::optional<SessionSummary>> pastSession {std::nullopt};

    // Puts a stored session into the window; false when it cannot be read or canOpen is false.
    bool open(SessionId session);

private:
    void start();
    void record();
    void recordParts(std::size_t most);
    void report(bool isTaken);
    bool writeFinished(std::size_t partCount);
    bool writeRunning();
    bool write(MeasurementPart part, std::vector<float> const& points);
    SessionHead head() const;
    void markSaved();

    TensioManager& m_tensioManager;
    SessionStore& m_store;
    Clock const& m_clock;

    // Not all of the session of the latest connection has been written, or it still runs.
    bool m_isRecording = false;
    // The store refused the latest change.
    bool m_isRefused = false;
    Date m_start;
    SessionId m_session = 0;
    // The store knows that a CSV file of the session exists.
    bool m_isMarked = false;
    // Finished measurements that are written whole, and points of the next one that are.
    std::size_t m_writtenMeasurements = 0;
    std::size_t m_writtenPoints = 0;
    Subscriptions m_subscriptions;
};

} // namespace tensio
