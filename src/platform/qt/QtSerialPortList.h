#pragma once

#include "platform/RecordShape.h"
#include "platform/SerialPort.h"
#include "platform/qt/MainQueue.h"
#include "platform/qt/QtRunLoop.h"

namespace tensio {

// Real ports, then virtual ones. The device's bridge, a CP210x, is listed under a name that holds
// its driver's customary name beside the system's own.
class QtSerialPortList : public SerialPortList {
public:
    // The queue must outlive the list, the list its ports.
    QtSerialPortList(MainQueue& queue, RecordShape shape)
        : m_queue(queue)
        , m_shape(shape)
    {
    }

    std::vector<std::shared_ptr<SerialPort>> availablePorts() override;

private:
    MainQueue& m_queue;
    RecordShape m_shape;
    // A panel holds back what the ports tell. On the line time goes on: where a burst ended must
    // be seen even then.
    MainQueue m_lineQueue;
    QtRunLoop m_lineTimers {m_lineQueue};
};

} // namespace tensio
