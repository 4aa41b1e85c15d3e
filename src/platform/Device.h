#pragma once

#include "platform/RecordFormat.h"

#include <cstdint>

namespace tensio {

// What the program knows about the device it listens to.
struct Device {
    // Part of the name of every port of the device's USB-UART bridge, as the bridge's driver names
    // it.
    char const* portNameFragment;
    // The USB vendor of the bridge, by which it is found where the system gives its port another
    // name.
    std::uint16_t bridgeVendor;
    RecordFormat recordFormat;
};

} // namespace tensio
