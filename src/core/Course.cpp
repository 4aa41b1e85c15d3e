#include "core/Course.h"

#include "platform/SessionStore.h"

#include <algorithm>

namespace tensio {

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
    return std::nullopt;
}

} // namespace tensio
