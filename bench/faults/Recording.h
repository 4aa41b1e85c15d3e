#pragma once

#include "core/SessionArchive.h"
#include "platform/qt/QtSessionStore.h"
#include "support/Session.h"

namespace tensio {

// A session in virtual time that is kept in the store at this path.
struct Recording {
    explicit Recording(QString const& path)
        : store(path)
    {
        session.connect();
    }

    Session session;
    QtSessionStore store;
    SessionArchive archive {session.manager, store, session.runLoop, session.clock};
};

} // namespace tensio
