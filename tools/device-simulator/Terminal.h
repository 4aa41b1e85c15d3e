#pragma once

#include <string>
#include <string_view>

namespace tensio {

// A pseudo-terminal: what is written here is what a program reads from the port. Errors throw
// std::system_error.
class Terminal {
public:
    // The link to the terminal replaces a stale one of the same path and goes with the object.
    explicit Terminal(std::string linkPath);
    Terminal(Terminal const&) = delete;
    Terminal& operator=(Terminal const&) = delete;
    ~Terminal();

    bool hasReader() const;
    void write(std::string_view bytes) const;

private:
    int m_master = -1;
    std::string m_linkPath;
};

} // namespace tensio
