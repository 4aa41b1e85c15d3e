#include "device-simulator/Terminal.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <system_error>
#include <termios.h>
#include <unistd.h>

namespace tensio {

namespace {

void require(bool isDone, char const* what)
{
    if (!isDone)
        throw std::system_error(errno, std::generic_category(), what);
}

// Bytes must pass as they are, and nothing may be echoed back. The settings belong to the terminal,
// not to the descriptor, and stay when this one is closed; closing it also makes the master report
// that no program reads.
void makeRaw(char const* terminal)
{
    int const slave = open(terminal, O_RDWR | O_NOCTTY | O_CLOEXEC);
    require(slave >= 0, terminal);
    termios settings {};
    tcgetattr(slave, &settings);
    cfmakeraw(&settings);
    tcsetattr(slave, TCSANOW, &settings);
    close(slave);
}

int openMaster()
{
    int const master = posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    require(master >= 0 && grantpt(master) == 0 && unlockpt(master) == 0, "pseudo-terminal");
    return master;
}

} // namespace

Terminal::Terminal(QString const& portName)
    : m_master(openMaster())
    , m_path(ptsname(m_master))
{
    makeRaw(m_path.c_str());
    m_port.emplace(portName, QString::fromStdString(m_path));
}

Terminal::~Terminal()
{
    // The link goes first, so that no program opens a terminal that has gone.
    m_port.reset();
    close(m_master);
}

bool Terminal::hasReader() const
{
    pollfd watched {m_master, 0, 0};
    return poll(&watched, 1, 0) >= 0 && (watched.revents & POLLHUP) == 0;
}

void Terminal::write(std::string_view bytes) const
{
    // What does not fit is lost, as on a real line whose reader is too slow.
    [[maybe_unused]] auto const written = ::write(m_master, bytes.data(), bytes.size());
}

} // namespace tensio
