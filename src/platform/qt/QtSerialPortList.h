#pragma once

#include "platform/Device.h"
#include "platform/PortInspector.h"
#include "platform/SerialPort.h"
#include "platform/qt/MainQueue.h"
#include "platform/qt/PortPlaces.h"
#include "platform/qt/QtRunLoop.h"
#include "platform/qt/QtSerialPort.h"

namespace tensio {

// Real ports, then virtual ones.
class QtSerialPortList
    : public SerialPortList
    , public PortInspector {
public:
    // The list must outlive its ports.
    QtSerialPortList(MainQueue& queue, Device const& device)
        : m_queue(queue)
        , m_device(device)
    {
    }

    std::vector<std::shared_ptr<SerialPort>> availablePorts() override;
    std::vector<InspectedPort> inspect() override;

private:
    InspectedPort inspect(PortPlace const& place) const;
    bool isOpenHere(QString const& device) const;

    MainQueue& m_queue;
    Device m_device;
    // The ports of the latest list.
    std::vector<std::weak_ptr<QtSerialPort>> m_listed;
    // Timers of the line run even while a panel is open, so that the end of a burst is noticed.
    MainQueue m_lineQueue;
    QtRunLoop m_lineTimers {m_lineQueue};
};

} // namespace tensio
