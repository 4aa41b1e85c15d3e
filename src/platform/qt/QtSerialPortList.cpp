#include "platform/qt/QtSerialPortList.h"

#include "platform/qt/QtSerialPort.h"
#include "platform/qt/VirtualPorts.h"

#include <QFileInfo>
#include <QSerialPortInfo>

namespace tensio {

namespace {

constexpr quint16 bridgeVendor = 0x10c4;

QString listedName(QSerialPortInfo const& info)
{
    auto const driverName = QStringLiteral("SLAB_USBtoUART");
    bool const isBridge = info.hasVendorIdentifier() && info.vendorIdentifier() == bridgeVendor;
    if (!isBridge || info.portName().contains(driverName))
        return info.portName();
    return QStringLiteral("%1 (%2)").arg(driverName, info.portName());
}

} // namespace

std::vector<std::shared_ptr<SerialPort>> QtSerialPortList::availablePorts()
{
    std::vector<std::shared_ptr<SerialPort>> ports;
    for (auto const& info : QSerialPortInfo::availablePorts()) {
        QtSerialPort::Place const place {listedName(info).toStdString(), info.systemLocation()};
        ports.push_back(std::make_shared<QtSerialPort>(place, m_shape, m_lineTimers, m_queue));
    }
    for (auto const& path : virtualPorts()) {
        QFileInfo const link(path);
        // Opened under the terminal's own name, for which the system keeps its locks.
        QtSerialPort::Place const place {
            link.fileName().toStdString(), link.canonicalFilePath(), true};
        ports.push_back(std::make_shared<QtSerialPort>(place, m_shape, m_lineTimers, m_queue));
    }
    return ports;
}

} // namespace tensio
