#include "platform/qt/HangUpWatch.h"

#include <poll.h>
#include <utility>

namespace tensio {

namespace {

constexpr int intervalMilliseconds = 250;

bool hasHungUp(int descriptor)
{
    pollfd watched {descriptor, 0, 0};
    return poll(&watched, 1, 0) > 0 && (watched.revents & (POLLHUP | POLLERR | POLLNVAL)) != 0;
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

void HangUpWatch::start(int descriptor)
{
    m_descriptor = descriptor;
    m_timer.start();
}

} // namespace tensio
