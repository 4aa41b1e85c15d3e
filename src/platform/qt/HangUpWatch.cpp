#include "platform/qt/HangUpWatch.h"

#include <utility>
#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>
#endif

namespace tensio {

HangUpWatch::HangUpWatch(std::function<void()> onHangUp)
    : m_onHangUp(std::move(onHangUp))
{
}

#ifdef Q_OS_UNIX

void HangUpWatch::start(TerminalHandle terminal)
{
    stop();
    int const watched = fcntl(terminal, F_DUPFD_CLOEXEC, 0);
    if (watched < 0)
        return; // Out of descriptors. Some Qt report a hang-up even so.
    m_notifier = std::make_unique<QSocketNotifier>(watched, QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, &m_context, [this, watched] {
        pollfd state {watched, 0, 0};
        if (poll(&state, 1, 0) > 0 && (state.revents & (POLLHUP | POLLERR)) != 0)
            report();
    });
}

// Later, since Qt may read after this. Not by a timer: while Qt keeps reading, none expires.
void HangUpWatch::report()
{
    m_notifier->setEnabled(false);
    auto const reportUnlessStopped = [this] {
        if (m_notifier && !m_notifier->isEnabled())
            m_onHangUp();
    };
    QMetaObject::invokeMethod(&m_context, reportUnlessStopped, Qt::QueuedConnection);
}

void HangUpWatch::stop()
{
    if (!m_notifier)
        return;
    auto const watched = static_cast<int>(m_notifier->socket());
    m_notifier.reset();
    ::close(watched);
}

#else

void HangUpWatch::start(TerminalHandle /*terminal*/) { }
void HangUpWatch::report() { }
void HangUpWatch::stop() { }

#endif

} // namespace tensio
