#include "platform/qt/PortPlaces.h"

#include "platform/qt/VirtualPorts.h"

#include <QFileInfo>
#include <QSerialPortInfo>

using namespace Qt::StringLiterals;

namespace tensio {

namespace {

QString vendor(QSerialPortInfo const& info)
{
    if (!info.hasVendorIdentifier())
        return info.manufacturer();
    return u"%1（%2:%3）"_s.arg(info.manufacturer())
        .arg(info.vendorIdentifier(), 4, 16, QLatin1Char('0'))
        .arg(info.productIdentifier(), 4, 16, QLatin1Char('0'));
}

} // namespace

std::vector<PortPlace> portPlaces(Device const& device)
{
    std::vector<PortPlace> places;
    for (auto const& info : QSerialPortInfo::availablePorts())
        places.push_back({listedName(device, info), info.systemLocation(), vendor(info),
            info.description(), info.serialNumber(), false});
    for (auto const& path : virtualPorts()) {
        QFileInfo const link(path);
        // Opened under the terminal's own name, for which the system keeps its locks.
        places.push_back({link.fileName(), link.canonicalFilePath(), {}, {}, {}, true});
    }
    return places;
}

} // namespace tensio
