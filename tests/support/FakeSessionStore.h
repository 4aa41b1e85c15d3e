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

    std::optional<SessionId> begin(SessionHead const& head, MeasurementPart const& part) override
    {
        if (refusals > 0)
            return --refusals, std::nullopt;
        auto const id = static_cast<SessionId>(stored.size()) + 1;
        stored[id].summary = {id, head.start, head.name, 0, 0.0f, false, head.isSimulated};
        return write(id, part) ? std::optional(id) : std::nullopt;
    }
    bool write(SessionId session, MeasurementPart const& part) override
    {
        if (refusals > 0)
            return --refusals < 0;
        auto& summary = stored[session].summary;
        auto& measurements = stored[session].measurements;
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
    bool dismiss(SessionId session) override { return (m_dismissed = session) != 0; }
    bool remove(std::vector<SessionId> const& sessions) override
    {
        return std::ranges::all_of(sessions, [this](auto id) { return stored.erase(id) == 1; });
    }
    bool removeAll() override { return stored.clear(), true; }
    void checkpoint() override { }

    SessionPage sessions(std::optional<SessionSummary> const& last, std::size_t most) override
    {
        SessionPage page;
        for (auto each = stored.rbegin(); each != stored.rend() && page.sessions.size() < most;
             ++each) {
            if (!last || each->first < last->id)
                page.sessions.push_back(each->second.summary);
        }
        return page;
    }
    std::optional<SessionSummary> unsavedSession() override
    {
        bool const isNone = stored.empty() || stored.rbegin()->second.summary.isSaved
            || stored.rbegin()->first == m_dismissed;
        return isNone ? std::nullopt : std::optional(stored.rbegin()->second.summary);
    }
    std::optional<StoredSession> load(SessionId session, StoredPoints) override
    {
        return stored.contains(session) ? std::optional(stored[session]) : std::nullopt;
    }

private:
    SessionId m_dismissed = 0;
};

} // namespace tensio
