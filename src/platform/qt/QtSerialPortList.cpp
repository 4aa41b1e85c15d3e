#include "platform/qt/QtSerialPortList.h"

#include "platform/qt/OpenError.h"
#include "platform/qt/PortPlaces.h"

#include <algorithm>

namespace tensio {

std::vector<std::shared_ptr<SerialPort>> QtSerialPortList::availablePorts()
{
    std::vector<std::shared_ptr<SerialPort>> ports;
    m_listed.clear();
    for (auto const& place : portPlaces()) {
        QtSerialPort::Location const location {
            place.name.toStdString(), place.device, place.isVirtual};
        auto const port = std::make_shared<QtSerialPort>(location, m_format, m_lineTimers, m_queue);
        ports.push_back(port);
        m_listed.push_back(port);
    }
    return ports;
}

std::vector<InspectedPort> QtSerialPortList::inspect(std::string_view nameFragment)
{
    std::vector<InspectedPort> ports;
    for (auto const& place : portPlaces()) {
        auto const name = place.name.toStdString();
        if (name.find(nameFragment) == std::string::npos)
            continue;
        bool const isOpen = isOpenHere(place.device);
        QSerialPort line(place.device);
        bool const isReadable = isOpen || line.open(QIODevice::ReadOnly);
        ports.push_back({name, place.device.toStdString(), place.vendor.toStdString(),
            place.serialNumber.toStdString(), place.isVirtual, isOpen,
            isReadable ? std::string() : openError(line, place.device)->localizedDescription()});
    }
    return ports;
}

bool QtSerialPortList::isOpenHere(QString const& device) const
{
    return std::ranges::any_of(m_listed, [&](auto const& listed) {
        auto const port = listed.lock();
        return port && port->isOpen() && port->device() == device;
    });
}

} // namespace tensio
