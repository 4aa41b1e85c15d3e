#include "core/Course.h"

#include "platform/SessionStore.h"

#include <algorithm>
#include <utility>

namespace tensio {

namespace {

CourseEntry entryOf(StoredSession const& session)
{
    auto const presses = static_cast<int>(session.measurements.size());
    CourseEntry entry {session.summary.start, presses};
    entry.target = session.target * session.targetPercent;
    float sum = 0.0f;
    for (auto const& measurement : session.measurements) {
        entry.best = std::max(entry.best, measurement.best);
        sum += measurement.best;
    }
    entry.average = presses > 0 ? sum / static_cast<float>(presses) : 0.0f;
    return entry;
}

} // namespace

std::optional<std::string> courseRefusal(std::span<SessionSummary const> sessions)
{
    if (sessions.empty())
        return "経過を見る測定を選んでください。";
    auto const differs = [&](auto member) {
        return std::ranges::any_of(
            sessions, [&](auto const& each) { return each.*member != sessions.front().*member; });
    };
    if (differs(&SessionSummary::name))
        return "氏名の異なる測定は、1つの経過にできません。同じ氏名の測定だけを選んでください。";
    if (differs(&SessionSummary::isSimulated))
        return "模擬装置の測定と実際の測定は、1つの経過にできません。";
    // More would stop the display while they are read and drawn.
    if (sessions.size() > 1000)
        return "1つの経過は1000件までです。期間を指定するなどして、測定を減らしてください。";
    return std::nullopt;
}

Course courseOf(std::vector<StoredSession> sessions)
{
    std::ranges::sort(sessions, {},
        [](auto const& each) { return std::pair(each.summary.start, each.summary.id); });
    auto const& first = sessions.front().summary;
    Course course {first.name, first.isSimulated, {}};
    for (auto const& session : sessions) {
        course.entries.push_back(entryOf(session));
        course.isComplete = course.isComplete && session.isComplete;
    }
    return course;
}

} // namespace tensio
