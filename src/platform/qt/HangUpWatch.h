#pragma once

#include <QObject>
#include <QSerialPort>
#include <QSocketNotifier>

#include <functional>
#include <memory>

namespace tensio {

using TerminalHandle = decltype(QSerialPort().handle());

// Notices that a terminal has hung up. Qt may not report it, and then keeps reading the terminal.
// Does nothing on systems other than Unix.
class HangUpWatch {
    Q_DISABLE_COPY_MOVE(HangUpWatch)

public:
    // Called once per hang-up, when Qt has read what had arrived before. It may call stop().
    explicit HangUpWatch(std::function<void()> onHangUp);
    ~HangUpWatch() { stop(); }

    void start(TerminalHandle terminal);
    void stop();

private:
    void report();

    std::function<void()> m_onHangUp;
    // Receives the queued calls; its end cancels them.
    QObject m_context;
    // Of a descriptor of its own, since Qt takes one notifier per descriptor.
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace tensio
