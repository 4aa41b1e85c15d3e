#pragma once

#include "platform/SessionStore.h"

#include <algorithm>
#include <map>

namespace tensio {

// Sessions in memory. The next `refusals` writes are refused.
struct FakeSessionStore : SessionStore {
    std::map<SessionId, StoredSession> stored;
    std::vector<SessionId> ended;
    std::size_t finishedMeasurements = 0;
    int refusals = 0;
    StoreProblem reason = StoreProblem::None;

    bool isOpen() const override { return true; }
    StoreProblem problem() const override { return reason; }

    std::optional<SessionId> begin(SessionHead const& head) override
    {
        auto const id = static_cast<SessionId>(stored.size()) + 1;
        stored[id].summary = {id, head.start, head.name, 0, 0.0f, false, head.isSimulated};
        return id;
    }
    bool write(SessionId session, MeasurementPart const& part) override
    {
        if (refusals > 0)
            return --refusals < 0;
        auto& [summary, measurements] = stored[session];
        summary.count = std::max(summary.count, part.number);
        measurements.resize(static_cast<std::size_t>(summary.count));
        auto& measurement = measurements.at(static_cast<std::size_t>(part.number) - 1);
        auto points = std::move(measurement.points);
        points.insert(points.end(), part.points.begin(), part.points.end());
        measurement = {part.number, part.best, part.target, part.timeStamp, std::move(points)};
        finishedMeasurements += part.isFinished ? 1 : 0;
        return true;
    }
    bool end(SessionId session, Date) override { return ended.push_back(session), true; }

    bool markSaved(SessionId session) override
    {
        return refusals == 0 && (stored[session].summary.isSaved = true);
    }
    bool putAside(SessionId session) override { return (m_aside = session) != 0; }
    bool remove(SessionId session) override { return stored.erase(session) == 1; }
    bool removeAll() override { return stored.clear(), true; }

    std::vector<SessionSummary> sessions(std::string const& namePart) override
    {
        std::vector<SessionSummary> found;
        for (auto const& [id, session] : stored) {
            if (session.summary.name.find(namePart) != std::string::npos)
                found.insert(found.begin(), session.summary);
        }
        return found;
    }
    std::optional<SessionSummary> unsavedSession() override
    {
        bool const isNone = stored.empty() || stored.rbegin()->second.summary.isSaved
            || stored.rbegin()->first == m_aside;
        return isNone ? std::nullopt : std::optional(stored.rbegin()->second.summary);
    }
    std::optional<StoredSession> load(SessionId session) override
    {
        return stored.contains(session) ? std::optional(stored[session]) : std::nullopt;
    }

private:
    SessionId m_aside = 0;
};

} // namespace tensio
