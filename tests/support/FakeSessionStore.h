#pragma once

#include "platform/SessionStore.h"

#include <algorithm>
#include <map>
#include <tuple>

namespace tensio {

// Sessions in memory. The next `refusals` changes are refused.
struct FakeSessionStore : SessionStore {
    std::map<SessionId, StoredSession> stored;
    std::vector<SessionId> dismissed;
    std::size_t longestPart = 0;
    int checkpoints = 0;
    bool isComplete = true;
    int refusals = 0;
    StoreProblem reason = StoreProblem::None;
    // Where to or from; empty once it is over. The state that it ends with, and how many sessions.
    std::string transferred;
    int transferCount = 3;
    TransferState transferEnd = TransferState::Done;

    bool isOpen() const override { return true; }
    StoreProblem problem() const override { return reason; }

    std::optional<SessionId> begin(SessionHead const& head, MeasurementPart const& part) override
    {
        if (isRefused())
            return std::nullopt;
        auto const id = ++m_lastId;
        stored[id] = {{id, head.start, head.name, 0, 0.0f, false, head.isSimulated}, {},
            head.target, head.targetPercent, std::nullopt, true};
        write(id, part);
        return id;
    }
    bool write(SessionId session, MeasurementPart const& part) override
    {
        if (isRefused())
            return false;
        auto const found = stored.find(session);
        if (found == stored.end())
            return true;
        auto& summary = found->second.summary;
        auto& measurements = found->second.measurements;
        summary.count = std::max(summary.count, part.number);
        summary.best = std::max(summary.best, part.best);
        measurements.resize(static_cast<std::size_t>(summary.count));
        auto& measurement = measurements.at(static_cast<std::size_t>(part.number) - 1);
        auto& points = measurement.points;
        points.insert(points.end(), part.points.begin(), part.points.end());
        measurement = {part.number, part.best, part.target, part.timeStamp, std::move(points)};
        longestPart = std::max(longestPart, part.points.size());
        return true;
    }
    bool end(SessionId session, SessionEnd const& end) override
    {
        return change([&] {
            if (auto const found = stored.find(session); found != stored.end())
                std::tie(found->second.end, found->second.target, found->second.targetPercent)
                    = std::tie(end.date, end.target, end.targetPercent);
        });
    }

    bool markSaved(SessionId session) override
    {
        return change([&] {
            if (stored.contains(session))
                stored[session].summary.isSaved = true;
        });
    }
    bool dismiss(SessionId session) override
    {
        return change([&] { dismissed.push_back(session); });
    }
    bool remove(std::vector<SessionId> const& sessions) override
    {
        return change([&] {
            for (auto const id : sessions)
                stored.erase(id);
        });
    }
    bool removeAll() override
    {
        return change([&] { stored.clear(); });
    }
    bool checkpoint() override { return ++checkpoints > 0; }

    SessionPage sessions(std::optional<SessionSummary> const& last, std::size_t most) override
    {
        SessionPage page {{}, isComplete};
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
            || std::ranges::count(dismissed, stored.rbegin()->first) > 0;
        return isNone ? std::nullopt : std::optional(stored.rbegin()->second.summary);
    }
    std::optional<StoredSession> load(SessionId session, StoredPoints) override
    {
        return stored.contains(session) ? std::optional(stored[session]) : std::nullopt;
    }
    std::unique_ptr<SessionTransfer> backUp(std::string const& path) override
    {
        transferred = path;
        return std::make_unique<Transfer>(*this);
    }
    std::unique_ptr<SessionTransfer> restore(std::string const& path) override
    {
        return backUp(path);
    }

private:
    struct Transfer : SessionTransfer { // NOLINT(cppcoreguidelines-special-member-functions)
        FakeSessionStore& store;
        int steps = 0;

        explicit Transfer(FakeSessionStore& of)
            : store(of)
        {
        }
        ~Transfer() override { store.transferred.clear(); }

        TransferState step() override
        {
            return ++steps < 3 ? TransferState::Running : store.transferEnd;
        }
        double progress() const override { return std::min(steps, 2) / 3.0; }
        int count() const override { return store.transferCount; }
    };

    bool isRefused() { return refusals > 0 && refusals-- > 0; }
    bool change(auto const& make)
    {
        bool const isDone = !isRefused();
        if (isDone)
            make();
        return isDone;
    }

    SessionId m_lastId = 0;
};

} // namespace tensio
