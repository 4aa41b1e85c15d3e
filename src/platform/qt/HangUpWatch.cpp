#include "platform/qt/HangUpWatch.h"

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>
#endif

namespace tensio {

HangUpWatch::HangUpWatch(std::function<void()> onHangUp)
{
    m_report.setSingleShot(true);
    QObject::connect(&m_report, &QTimer::timeout, &m_report, std::move(onHangUp));
}

#ifdef Q_OS_UNIX

void HangUpWatch::start(TerminalHandle terminal)
{
    stop();
    int const watched = fcntl(terminal, F_DUPFD_CLOEXEC, 0);
    m_notifier = std::make_unique<QSocketNotifier>(watched, QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, &m_report, [this, watched] {
        pollfd state {watched, 0, 0};
        if (poll(&state, 1, 0) > 0 && (state.revents & (POLLHUP | POLLERR | POLLNVAL)) != 0) {
            m_notifier->setEnabled(false);
            m_report.start(0);
        }
    });
}

void HangUpWatch::stop()
{
    m_report.stop();
    if (!m_notifier)
        return;
    auto const watched = static_cast<int>(m_notifier->socket());
    m_notifier.reset();
    ::close(watched);
}

#else

void HangUpWatch::start(TerminalHandle /*terminal*/) { }
void HangUpWatch::stop() { }

#endif

} // namespace tensio
