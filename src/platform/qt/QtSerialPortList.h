#pragma once

#include "platform/PortInspector.h"
#include "platform/RecordFormat.h"
#include "platform/SerialPort.h"
#include "platform/qt/MainQueue.h"
#include "platform/qt/QtRunLoop.h"
#include "platform/qt/QtSerialPort.h"

namespace tensio {

// Real ports, then virtual ones.
class QtSerialPortList
    : public SerialPortList
    , public PortInspector {
public:
    // The queue must outlive the list, the list its ports.
    QtSerialPortList(MainQueue& queue, RecordFormat format)
        : m_queue(queue)
        , m_format(format)
    {
    }

    std::vector<std::shared_ptr<SerialPort>> availablePorts() override;
    std::vector<InspectedPort> inspect(std::string_view nameFragment) override;

private:
    bool isOpenHere(QString const& device) const;

    MainQueue& m_queue;
    RecordFormat m_format;
    // The ports of the latest list.
    std::vector<std::weak_ptr<QtSerialPort>> m_listed;
    // Timers of the line run even while a panel is open, so that the end of a burst is noticed.
    MainQueue m_lineQueue;
    QtRunLoop m_lineTimers {m_lineQueue};
};

} // namespace tensio
