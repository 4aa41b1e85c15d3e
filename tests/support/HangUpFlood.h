#pragma once

#include <QCoreApplication>
#include <QEvent>

#include <cerrno>

namespace tensio {

// For its lifetime a line that has hung up floods its reader. Qt takes what errno happens to be for
// the reason why nothing was read: for some it stops reading, for others it goes on without end.
class HangUpFlood : public QObject {
public:
    // How often a line was read.
    int reads = 0;

    HangUpFlood() { QCoreApplication::instance()->installEventFilter(this); }

    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::SockAct) {
            ++reads;
            errno = 0;
        }
        return false;
    }
};

} // namespace tensio
