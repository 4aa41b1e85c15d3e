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

QString listedName(Device const& device, QString const& portName, quint16 vendor);
QString withNumbers(QString const& manufacturer, quint16 vendor, quint16 product);

// A real port; Info is QSerialPortInfo.
template<typename Info>
PortPlace placeOf(Device const& device, Info const& info)
{
    return {listedName(device, info.portName(), info.vendorIdentifier()), info.systemLocation(),
        info.hasVendorIdentifier()
            ? withNumbers(info.manufacturer(), info.vendorIdentifier(), info.productIdentifier())
            : info.manufacturer(),
        info.description(), info.serialNumber()};
}

// What is plugged in now: real ports, then virtual ones.
std::vector<PortPlace> portPlaces(Device const& device);

} // namespace tensio
