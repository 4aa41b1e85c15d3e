#include "platform/qt/PortPlaces.h"

#include "platform/qt/VirtualPorts.h"

#include <QFileInfo>
#include <QSerialPortInfo>

namespace tensio {

QString listedName(Device const& device, QString const& portName, quint16 vendor)
{
    auto const driverName = QString::fromLatin1(device.portNameFragment);
    if (vendor != device.bridgeVendor || portName.contains(driverName))
        return portName;
    return QStringLiteral("%1 (%2)").arg(driverName, portName);
}

QString withNumbers(QString const& manufacturer, quint16 vendor, quint16 product)
{
    return QStringLiteral("%1（%2:%3）")
        .arg(manufacturer)
        .arg(vendor, 4, 16, QLatin1Char('0'))
        .arg(product, 4, 16, QLatin1Char('0'));
}

std::vector<PortPlace> portPlaces(Device const& device)
{
    std::vector<PortPlace> places;
    for (auto const& info : QSerialPortInfo::availablePorts())
        places.push_back(placeOf(device, info));
    for (auto const& path : virtualPorts()) {
        QFileInfo const link(path);
        // Opened under the terminal's own name, for which the system keeps its locks.
        places.push_back({link.fileName(), link.canonicalFilePath(), {}, {}, {}, true});
    }
    return places;
}

} // namespace tensio
