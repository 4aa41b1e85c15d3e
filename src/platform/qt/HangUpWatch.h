#pragma once

#include <QTimer>

#include <functional>

namespace tensio {

// Asks the descriptor of a terminal, 4 times a second, whether the other side has gone: not every
// Qt tells.
class HangUpWatch {
public:
    explicit HangUpWatch(std::function<void()> onHangUp);

    void start(int descriptor);
    void stop() { m_timer.stop(); }

private:
    QTimer m_timer;
    int m_descriptor = -1;
};

} // namespace tensio
