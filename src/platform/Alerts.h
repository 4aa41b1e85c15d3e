#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace tensio {

enum class AlertStyle { Warning, Critical };

// A question or message that holds up everything else until it is answered.
class Alerts {
public:
    Alerts() = default;
    Alerts(Alerts const&) = delete;
    Alerts& operator=(Alerts const&) = delete;
    virtual ~Alerts() = default;

    // The index of the button pressed. Closing the alert otherwise answers with the last button.
    virtual std::size_t runModal(
        AlertStyle style, std::string const& message, std::vector<std::string> const& buttons)
        = 0;
};

} // namespace tensio
