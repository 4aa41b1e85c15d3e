#pragma once

#include "platform/Device.h"

#include <QString>

#include <vector>

namespace tensio {

struct PortPlace {
    // A bridge of the device's has the name that its driver gives it on macOS, followed by the
    // system's own; other ports have the system's.
    QString name;
    // The path of the device file, or the system's name of the port.
    QString device;
    QString vendor;
    QString product;
    QString serialNumber;
    bool isVirtual = false;
};

// Info is QSerialPortInfo.
template<typename Info>
QString listedName(Device const& device, Info const& info)
{
    auto const driverName = QString::fromLatin1(device.portNameFragment);
    auto const name = info.portName();
    bool const isUnnamed
        = info.vendorIdentifier() == device.bridgeVendor && !name.contains(driverName);
    return isUnnamed ? QStringLiteral("%1 (%2)").arg(driverName, name) : name;
}

// What is plugged in now: real ports, then virtual ones.
std::vector<PortPlace> portPlaces(Device const& device);

} // namespace tensio
