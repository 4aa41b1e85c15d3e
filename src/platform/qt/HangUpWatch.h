#pragma once

#include <QSerialPort>
#include <QSocketNotifier>
#include <QTimer>

#include <functional>
#include <memory>

namespace tensio {

using TerminalHandle = decltype(QSerialPort().handle());

// Notices that a terminal has hung up. Qt may not report it, and then reads the terminal without
// end. Does nothing on systems other than Unix.
class HangUpWatch {
public:
    // Called once a hang-up, when Qt has read what had arrived before. It may call stop().
    explicit HangUpWatch(std::function<void()> onHangUp);
    HangUpWatch(HangUpWatch const&) = delete;
    HangUpWatch& operator=(HangUpWatch const&) = delete;
    ~HangUpWatch() { stop(); }

    void start(TerminalHandle terminal);
    void stop();

private:
    QTimer m_report;
    // Of a descriptor of its own, since Qt takes one notifier a descriptor.
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace tensio
