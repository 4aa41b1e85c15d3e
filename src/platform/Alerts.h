#pragma once

#include "reactive/Interface.h"

#include <cstddef>
#include <string>
#include <vector>

namespace tensio {

enum class AlertStyle { Warning, Critical };

// A question or message; everything else waits until it is answered.
class Alerts : public Interface {
public:
    // The index of the button pressed. At least one button is needed; texts are UTF-8. The last
    // button is the default one and the answer to Escape, so it must be the one that does no harm.
    virtual std::size_t runModal(
        AlertStyle style, std::string const& message, std::vector<std::string> const& buttons)
        = 0;
};

} // namespace tensio
