#pragma once

#include "platform/qt/VirtualPorts.h"

#include <optional>
#include <string>
#include <string_view>

namespace tensio {

// A pseudo-terminal, published as a virtual port: what is written here is what a program reads from
// the port.
class Terminal {
public:
    // Throws std::runtime_error when there is no terminal or it cannot be published.
    explicit Terminal(QString const& portName);
    Terminal(Terminal const&) = delete;
    Terminal& operator=(Terminal const&) = delete;
    ~Terminal();

    std::string const& path() const { return m_path; }
    bool hasReader() const;
    void write(std::string_view bytes) const;

private:
    int m_master;
    std::string m_path;
    std::optional<VirtualPort> m_port;
};

} // namespace tensio
