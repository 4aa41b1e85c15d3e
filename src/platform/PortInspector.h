#pragma once

#include "reactive/Interface.h"

#include <string>
#include <string_view>
#include <vector>

namespace tensio {

// A port as the person who connects the device sees it.
struct InspectedPort {
    std::string name;
    // What the operating system calls it.
    std::string node;
    std::string vendor;
    std::string serialNumber;
    bool isSimulated = false;
    // This program is reading from it.
    bool isOpen = false;
    // Why it cannot be read and what to do; empty when it can.
    std::string obstacle;
};

class PortInspector : public Interface {
public:
    // The ports whose names contain the fragment, in the order in which a connection looks at
    // them. Opens each of them for a moment.
    virtual std::vector<InspectedPort> inspect(std::string_view nameFragment) = 0;
};

} // namespace tensio
