#include "platform/qt/PortPlaces.h"

#include "platform/qt/VirtualPorts.h"

#include <QFileInfo>
#include <QSerialPortInfo>

namespace tensio {

namespace {

QString vendor(QSerialPortInfo const& info)
{
    if (!info.hasVendorIdentifier())
        return info.manufacturer();
    return QStringLiteral("%1（%2:%3）")
        .arg(info.manufacturer())
        .arg(info.vendorIdentifier(), 4, 16, QLatin1Char('0'))
        .arg(info.productIdentifier(), 4, 16, QLatin1Char('0'));
}

} // namespace

QString listedName(QString const& portName, quint16 vendor)
{
    constexpr quint16 bridgeVendor = 0x10c4;
    auto const driverName = QStringLiteral("SLAB_USBtoUART");
    if (vendor != bridgeVendor || portName.contains(driverName))
        return portName;
    return QStringLiteral("%1 (%2)").arg(driverName, portName);
}

std::vector<PortPlace> portPlaces()
{
    std::vector<PortPlace> places;
    for (auto const& info : QSerialPortInfo::availablePorts())
        places.push_back({listedName(info.portName(), info.vendorIdentifier()),
            info.systemLocation(), vendor(info), info.serialNumber(), false});
    for (auto const& path : virtualPorts()) {
        QFileInfo const link(path);
        // Opened under the terminal's own name, for which the system keeps its locks.
        places.push_back({link.fileName(), link.canonicalFilePath(), {}, {}, true});
    }
    return places;
}

} // namespace tensio
