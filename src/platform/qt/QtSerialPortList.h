#pragma once

#include "platform/SerialPort.h"
#include "reactive/MutableProperty.h"
#include "reactive/Scheduler.h"

namespace tensio {

class MainQueue;

// Real ports, then virtual ones. The device's bridge, a CP210x, is listed under a name that holds
// its driver's customary name beside the system's own.
class QtSerialPortList : public SerialPortList {
public:
    // Both must outlive the list and its ports; the list must outlive its ports.
    QtSerialPortList(Scheduler& scheduler, MainQueue& queue)
        : m_scheduler(scheduler)
        , m_queue(queue)
    {
    }

    // A virtual port of this list is open: what is measured is simulated.
    MutableProperty<bool> isVirtualPortOpen {false};

    std::vector<std::shared_ptr<SerialPort>> availablePorts() override;

private:
    Scheduler& m_scheduler;
    MainQueue& m_queue;
};

} // namespace tensio
