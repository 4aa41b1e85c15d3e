#include "platform/qt/HangUpWatch.h"

#include <utility>
#ifdef Q_OS_UNIX
#include <poll.h>
#endif

namespace tensio {

namespace {

constexpr int intervalMilliseconds = 250;

bool hasHungUp([[maybe_unused]] TerminalHandle terminal)
{
#ifdef Q_OS_UNIX
    pollfd watched {terminal, 0, 0};
    return poll(&watched, 1, 0) > 0 && (watched.revents & (POLLHUP | POLLERR | POLLNVAL)) != 0;
#else
    return false;
#endif
}

} // namespace

HangUpWatch::HangUpWatch(std::function<void()> onHangUp)
{
    m_timer.setInterval(intervalMilliseconds);
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this, report = std::move(onHangUp)] {
        if (hasHungUp(m_terminal))
            report();
    });
}

void HangUpWatch::start(TerminalHandle terminal)
{
    m_terminal = terminal;
    m_timer.start();
}

} // namespace tensio
