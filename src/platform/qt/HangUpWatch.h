#pragma once

#include <QSerialPort>
#include <QTimer>

#include <functional>

namespace tensio {

using TerminalHandle = decltype(QSerialPort().handle());

// Polls a terminal 4 times a second for a hang-up, which some Qt versions do not report. Does
// nothing on systems other than Unix.
class HangUpWatch {
public:
    // Called at every poll until stop(), which the function may call.
    explicit HangUpWatch(std::function<void()> onHangUp);

    void start(TerminalHandle terminal);
    void stop() { m_timer.stop(); }

private:
    QTimer m_timer;
    TerminalHandle m_terminal {};
};

} // namespace tensio
