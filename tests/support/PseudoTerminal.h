#pragma once

#include <cstdlib>
#include <fcntl.h>
#include <stdexcept>
#include <string>
#include <string_view>
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

} // namespace tensio
