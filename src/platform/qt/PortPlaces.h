#pragma once

#include <QString>

#include <vector>

namespace tensio {

struct PortPlace {
    // As listedName() gives it.
    QString name;
    // The path of the device file, or the system's name of the port.
    QString device;
    QString vendor;
    QString serialNumber;
    bool isVirtual = false;
};

// The name under which a port is listed. The device's bridge, a CP210x (USB vendor 10C4), gets the
// name that its driver has on macOS, followed by the system's own. The vendor is 0 if unknown.
QString listedName(QString const& portName, quint16 vendor);

// What is plugged in now: real ports, then virtual ones.
std::vector<PortPlace> portPlaces();

} // namespace tensio
