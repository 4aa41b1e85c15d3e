#pragma once

#include "platform/RecordFormat.h"
#include "platform/SerialPort.h"
#include "platform/qt/MainQueue.h"
#include "platform/qt/QtRunLoop.h"

namespace tensio {

// The name under which a port is listed. The device's bridge, a CP210x (USB vendor 10C4), gets the
// name that its driver has on macOS, followed by the system's own. The vendor is 0 if unknown.
QString listedName(QString const& portName, quint16 vendor);

// Real ports, then virtual ones.
class QtSerialPortList : public SerialPortList {
public:
    // The queue must outlive the list, the list its ports.
    QtSerialPortList(MainQueue& queue, RecordFormat format)
        : m_queue(queue)
        , m_format(format)
    {
    }

    std::vector<std::shared_ptr<SerialPort>> availablePorts() override;

private:
    MainQueue& m_queue;
    RecordFormat m_format;
    // Timers of the line run even while a panel is open, so that the end of a burst is noticed.
    MainQueue m_lineQueue;
    QtRunLoop m_lineTimers {m_lineQueue};
};

} // namespace tensio
