#pragma once

#include "support/ManualRunLoop.h"
#include "support/TerminalSession.h"

#include <QCoreApplication>

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace tensio {

// A connected session whose bytes go through a real terminal while its time is virtual.
struct TerminalPlayer {
    MainQueue queue;
    ManualRunLoop runLoop;
    TerminalSession session {queue, runLoop};
    TerminalWatch watch {session.terminal};

    TerminalPlayer()
    {
        if (!session.connect())
            throw std::runtime_error("the port does not open");
    }

    void write(std::string_view bytes)
    {
        // What a terminal holds at once.
        constexpr std::size_t most = 2048;
        for (; !bytes.empty(); bytes.remove_prefix(std::min(most, bytes.size()))) {
            auto const piece = bytes.substr(0, most);
            session.terminal.write(piece);
            watch.waitForUnread(piece.size());
            while (watch.unread() > 0)
                QCoreApplication::processEvents();
            settle();
        }
    }

    // Timers of the session fall due in between what the event loop delivers.
    void pause(double seconds)
    {
        constexpr double step = 0.001;
        for (auto left = std::lround(seconds / step); left > 0; --left) {
            runLoop.advance(Seconds(step));
            settle();
        }
    }

    void pull()
    {
        session.terminal.unplug();
        if (!QTest::qWaitFor([&] { return !session.manager.isMeasuring.value(); }))
            throw std::runtime_error("nobody notices that the cable is pulled");
    }

    Measurements const& measurements() const
    {
        return session.manager.measurementList.measurements();
    }

private:
    static void settle()
    {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::sendPostedEvents();
    }
};

} // namespace tensio
