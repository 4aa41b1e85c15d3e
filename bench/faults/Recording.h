#pragma once

#include "core/SessionArchive.h"
#include "platform/qt/QtSessionStore.h"
#include "support/Session.h"

namespace tensio {

// A session in virtual time that is kept in the store at this path.
struct Recording {
    explicit Recording(QString const& path)
        : store(path)
        , archive(session.manager, store, session.runLoop, session.clock)
    {
        session.connect();
    }

    Session session;
    QtSessionStore store;
    SessionArchive archive;
};

// As a press makes them, from its beginning.
inline bool isPress(std::vector<float> const& points)
{
    float place = 0.0f;
    return std::ranges::all_of(points, [&](float point) { return point == ++place; });
}

} // namespace tensio
