#include "platform/qt/ProcessEnd.h"

#include <array>
#include <cstdlib>
#include <utility>
#ifdef Q_OS_UNIX
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>
#endif

namespace tensio {

namespace {

// Handlers of signals and of exit() are plain functions, which find what they need only here.
std::function<void()> const* exitHandler = nullptr;

void handleExit()
{
    if (auto const* handler = std::exchange(exitHandler, nullptr))
        (*handler)();
}

#ifdef Q_OS_UNIX

constexpr std::array requests {SIGTERM, SIGHUP, SIGINT};
std::array<int, 2> signalPipe {-1, -1};

// Little else is allowed in a signal handler.
void handleSignal(int signal)
{
    int const error = errno;
    std::signal(signal, SIG_DFL);
    [[maybe_unused]] auto const written = write(signalPipe[1], "", 1);
    errno = error;
}

// A signal that is ignored stays so.
void answerSignals(void (*handler)(int))
{
    for (auto const signal : requests) {
        if (std::signal(signal, handler) == SIG_IGN)
            std::signal(signal, SIG_IGN);
    }
}

#endif

} // namespace

ProcessEnd::ProcessEnd(std::function<void()> onRequest, std::function<void()> onExit)
    : m_onRequest(std::move(onRequest))
    , m_onExit(std::move(onExit))
{
    [[maybe_unused]] static int const isRegistered = std::atexit(handleExit);
    exitHandler = &m_onExit;
    watchSignals();
}

ProcessEnd::~ProcessEnd()
{
    exitHandler = nullptr;
#ifdef Q_OS_UNIX
    if (!m_notifier)
        return;
    answerSignals(SIG_DFL);
    m_notifier.reset();
    for (auto const end : signalPipe)
        close(end);
#endif
}

void ProcessEnd::watchSignals()
{
#ifdef Q_OS_UNIX
    if (pipe(signalPipe.data()) != 0)
        return;
    for (auto const end : signalPipe)
        fcntl(end, F_SETFD, FD_CLOEXEC);
    m_notifier = std::make_unique<QSocketNotifier>(signalPipe[0], QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(), [this] {
        m_notifier->setEnabled(false);
        m_onRequest();
    });
    answerSignals(handleSignal);
#endif
}

} // namespace tensio
