#pragma once

#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <stdexcept>
#include <string>
#include <string_view>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

namespace tensio {

// A real terminal of the system; unplug() is what a pulled cable looks like to its reader.
class PseudoTerminal {
public:
    PseudoTerminal()
        : m_master(posix_openpt(O_RDWR | O_NOCTTY))
    {
        if (m_master < 0 || grantpt(m_master) != 0 || unlockpt(m_master) != 0)
            throw std::runtime_error("no pseudo-terminal");
        m_path = ptsname(m_master);
        int const slave = ::open(m_path.c_str(), O_RDWR | O_NOCTTY);
        termios settings {};
        tcgetattr(slave, &settings);
        cfmakeraw(&settings);
        tcsetattr(slave, TCSANOW, &settings);
        ::close(slave);
    }
    PseudoTerminal(PseudoTerminal const&) = delete;
    PseudoTerminal& operator=(PseudoTerminal const&) = delete;
    ~PseudoTerminal() { unplug(); }

    std::string const& path() const { return m_path; }

    void write(std::string_view bytes) const
    {
        if (::write(m_master, bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size()))
            throw std::runtime_error("short write to the terminal");
    }

    bool hasReader() const
    {
        pollfd watched {m_master, 0, 0};
        return poll(&watched, 1, 0) >= 0 && (watched.revents & POLLHUP) == 0;
    }

    void unplug()
    {
        if (m_master >= 0)
            ::close(m_master);
        m_master = -1;
    }

private:
    int m_master;
    std::string m_path;
};

// Looks, beside the reader of a terminal, at what it has not read yet. Made before the reader opens
// the terminal, which may keep others out.
class TerminalWatch {
public:
    explicit TerminalWatch(PseudoTerminal const& terminal)
        : m_slave(::open(terminal.path().c_str(), O_RDONLY | O_NOCTTY))
    {
    }
    TerminalWatch(TerminalWatch const&) = delete;
    TerminalWatch& operator=(TerminalWatch const&) = delete;
    ~TerminalWatch() { ::close(m_slave); }

    std::size_t unread() const
    {
        int count = 0;
        return ioctl(m_slave, FIONREAD, &count) == 0 ? static_cast<std::size_t>(count) : 0;
    }

    termios settings() const
    {
        termios settings {};
        tcgetattr(m_slave, &settings);
        return settings;
    }

    // What was written reaches the other side a moment later, by way of the system. Nobody may read
    // meanwhile.
    void waitForUnread(std::size_t count) const
    {
        pollfd watched {m_slave, POLLIN, 0};
        while (unread() < count) {
            if (poll(&watched, 1, 5000) <= 0)
                throw std::runtime_error("what was written does not arrive");
        }
    }

private:
    int m_slave;
};

} // namespace tensio
