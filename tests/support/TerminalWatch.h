#pragma once

#include "device-simulator/Terminal.h"

#include <fcntl.h>
#include <poll.h>
#include <stdexcept>
#include <sys/ioctl.h>
#include <unistd.h>

namespace tensio {

// Looks, beside the reader of a terminal, at what it has not read yet. Made before the reader opens
// the terminal, which may keep others out.
class TerminalWatch {
public:
    explicit TerminalWatch(Terminal const& terminal)
        : descriptor(::open(terminal.path().c_str(), O_RDONLY | O_NOCTTY))
    {
    }
    TerminalWatch(TerminalWatch const&) = delete;
    TerminalWatch& operator=(TerminalWatch const&) = delete;
    ~TerminalWatch() { ::close(descriptor); }

    int const descriptor;

    bool hasUnread() const
    {
        int count = 0;
        return ioctl(descriptor, FIONREAD, &count) == 0 && count > 0;
    }
    // What was written reaches the other side a moment later. Nobody may read meanwhile.
    void waitForUnread() const
    {
        pollfd watched {descriptor, POLLIN, 0};
        if (poll(&watched, 1, 5000) <= 0)
            throw std::runtime_error("what was written does not arrive");
    }
};

} // namespace tensio
