#pragma once

#include "reactive/Interface.h"

#include <string>
#include <vector>

namespace tensio {

// A port as the person who connects the device sees it.
struct InspectedPort {
    std::string name;
    // What the operating system calls it.
    std::string node;
    std::string vendor;
    std::string product;
    std::string serialNumber;
    // Not a port of the device's bridge.
    bool isOther = false;
    bool isSimulated = false;
    // This program is reading from it.
    bool isOpen = false;
    // Why it cannot be read and what to do; empty when it can.
    std::string obstacle;
};

// Looks at the ports for the person who connects the device.
class PortInspector : public Interface {
public:
    // The ports of the device's bridge, in the order in which a connection looks at them, then the
    // others. Opens each of the former for a moment.
    virtual std::vector<InspectedPort> inspect() = 0;
};

} // namespace tensio
