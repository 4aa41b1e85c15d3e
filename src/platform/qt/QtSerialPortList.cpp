#include "platform/qt/QtSerialPortList.h"

#include "platform/qt/QtSerialPort.h"
#include "platform/qt/VirtualPorts.h"

#include <QFileInfo>
#include <QSerialPortInfo>

namespace tensio {

QString listedName(QString const& portName, quint16 vendor)
{
    constexpr quint16 bridgeVendor = 0x10c4;
    auto const driverName = QStringLiteral("SLAB_USBtoUART");
    if (vendor != bridgeVendor || portName.contains(driverName))
        return portName;
    return QStringLiteral("%1 (%2)").arg(driverName, portName);
}

std::vector<std::shared_ptr<SerialPort>> QtSerialPortList::availablePorts()
{
    std::vector<std::shared_ptr<SerialPort>> ports;
    for (auto const& info : QSerialPortInfo::availablePorts()) {
        auto const name = listedName(info.portName(), info.vendorIdentifier());
        QtSerialPort::Location const location {name.toStdString(), info.systemLocation()};
        ports.push_back(std::make_shared<QtSerialPort>(location, m_format, m_lineTimers, m_queue));
    }
    for (auto const& path : virtualPorts()) {
        QFileInfo const link(path);
        // Opened under the terminal's own name, for which the system keeps its locks.
        QtSerialPort::Location const location {
            link.fileName().toStdString(), link.canonicalFilePath(), true};
        ports.push_back(std::make_shared<QtSerialPort>(location, m_format, m_lineTimers, m_queue));
    }
    return ports;
}

} // namespace tensio
