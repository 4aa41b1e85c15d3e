#pragma once

#include <QSocketNotifier>

#include <functional>
#include <memory>

namespace tensio {

// Notices that the process is to end, other than by its window. One at a time.
class ProcessEnd {
public:
    // The request comes from the event loop, after the first SIGTERM, SIGHUP or SIGINT; a second of
    // the same kind ends the process at once, and one that is ignored stays so. The exit is a call
    // of exit() somewhere, as Qt does when the X server has gone: no event loop runs any more.
    // Elsewhere than on Unix there are no signals.
    ProcessEnd(std::function<void()> onRequest, std::function<void()> onExit);
    ProcessEnd(ProcessEnd const&) = delete;
    ProcessEnd& operator=(ProcessEnd const&) = delete;
    ~ProcessEnd();

private:
    void watchSignals();

    std::function<void()> m_onRequest;
    std::function<void()> m_onExit;
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace tensio
