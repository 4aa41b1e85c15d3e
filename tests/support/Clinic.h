#pragma once

#include "panels/InfoControlsViewController.h"
#include "platform/qt/QtRunLoop.h"
#include "support/TerminalSession.h"

#include <QWidget>

#include <algorithm>
#include <string>

namespace tensio {

// The control panel with a real port on a terminal and the timers of the program.
struct Clinic {
    MainQueue queue;
    QtRunLoop runLoop {queue};
    TerminalSession session {queue, runLoop};
    TerminalWatch watch {session.terminal};
    QWidget window;
    QWidget view {&window};
    InfoControlsViewController controller {session.manager, runLoop, session.alerts, view};

    bool connect() { return session.connect(); }

    // Until the port has read it.
    bool write(std::string_view bytes)
    {
        session.terminal.write(bytes);
        watch.waitForUnread(bytes.size());
        return QTest::qWaitFor([&] { return watch.unread() == 0; });
    }

    // Pulls the cable, until the user is told.
    bool pull()
    {
        session.terminal.unplug();
        return QTest::qWaitFor([&] { return !session.alerts.messages.empty(); });
    }
};

} // namespace tensio
