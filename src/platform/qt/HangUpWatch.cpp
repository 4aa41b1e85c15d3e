#include "platform/qt/HangUpWatch.h"

#ifdef Q_OS_UNIX
#include <poll.h>
#endif
#include <utility>

namespace tensio {

namespace {

constexpr int intervalMilliseconds = 250;

bool hasHungUp(qintptr descriptor)
{
#ifdef Q_OS_UNIX
    pollfd watched {static_cast<int>(descriptor), 0, 0};
    return poll(&watched, 1, 0) > 0 && (watched.revents & (POLLHUP | POLLERR | POLLNVAL)) != 0;
#else
    // Elsewhere Qt's own report is reliable.
    Q_UNUSED(descriptor);
    return false;
#endif
}

} // namespace

HangUpWatch::HangUpWatch(std::function<void()> onHangUp)
{
    m_timer.setInterval(intervalMilliseconds);
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this, report = std::move(onHangUp)] {
        if (hasHungUp(m_descriptor))
            report();
    });
}

void HangUpWatch::start(qintptr descriptor)
{
    m_descriptor = descriptor;
    m_timer.start();
}

} // namespace tensio
