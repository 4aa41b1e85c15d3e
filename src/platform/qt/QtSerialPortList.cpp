#include "platform/qt/QtSerialPortList.h"

#include "platform/qt/OpenError.h"

#include <algorithm>

namespace tensio {

std::vector<std::shared_ptr<SerialPort>> QtSerialPortList::availablePorts()
{
    std::vector<std::shared_ptr<SerialPort>> ports;
    m_listed.clear();
    for (auto const& place : portPlaces(m_device)) {
        QtSerialPort::Location const location {
            place.name.toStdString(), place.device, place.isVirtual};
        auto const port = std::make_shared<QtSerialPort>(
            location, m_device.recordFormat, m_lineTimers, m_queue);
        ports.push_back(port);
        m_listed.push_back(port);
    }
    return ports;
}

std::vector<InspectedPort> QtSerialPortList::inspect()
{
    std::vector<InspectedPort> ports;
    for (auto const& place : portPlaces(m_device))
        ports.push_back(inspect(place));
    // Of std::ranges Clang 14 does not compile it with GCC's library.
    std::stable_partition(
        ports.begin(), ports.end(), [](auto const& port) { return !port.isOther; });
    return ports;
}

InspectedPort QtSerialPortList::inspect(PortPlace const& place) const
{
    InspectedPort port {place.name.toStdString(), place.device.toStdString(),
        place.vendor.toStdString(), place.product.toStdString(), place.serialNumber.toStdString(),
        !place.name.contains(QLatin1String(m_device.portNameFragment)), place.isVirtual,
        isOpenHere(place.device), {}};
    // Opening a port may disturb what is connected to it.
    if (port.isOther || port.isOpen)
        return port;
    QSerialPort line(place.device);
    if (!line.open(QIODevice::ReadOnly))
        port.obstacle = openError(line, place.device)->localizedDescription();
    return port;
}

bool QtSerialPortList::isOpenHere(QString const& device) const
{
    return std::ranges::any_of(m_listed, [&](auto const& listed) {
        auto const port = listed.lock();
        return port && port->isOpen() && port->device() == device;
    });
}

} // namespace tensio
