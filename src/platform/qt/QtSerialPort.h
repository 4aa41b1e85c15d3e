#pragma once

#include "platform/RecordGatherer.h"
#include "platform/SerialPort.h"
#include "platform/qt/HangUpWatch.h"

#include <QObject>
#include <QSerialPort>

#include <functional>

namespace tensio {

class MainQueue;

// A port of the operating system. Everything it tells its delegate goes through the queue, so that
// the delegate may open an alert; the loss of the device is a close, not an error.
class QtSerialPort
    : public QObject
    , public SerialPort {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(QtSerialPort)

public:
    struct Place {
        std::string name;
        // The device file, or what else the system calls the port.
        QString node;
        bool isVirtual = false;
    };

    // The scheduler and the queue must outlive the port.
    QtSerialPort(Place place, RecordShape shape, Scheduler& scheduler, MainQueue& queue);
    ~QtSerialPort() override;

    std::string name() const override { return m_place.name; }
    bool isVirtual() const override { return m_place.isVirtual; }
    void setDelegate(SerialPortDelegate* delegate) override { m_delegate = delegate; }
    void setBaudRate(int baudRate) override;
    void setParity(Parity parity) override;
    void setNumberOfStopBits(int count) override;
    void open() override;
    // Data that had not been delivered yet are dropped: who closes does not want to hear more.
    void close() override;

private:
    void readyRead();
    void lose();
    void closeLine();
    void tellOfData(std::string bytes);
    void tell(std::function<void(SerialPortDelegate&)> message);

    Place m_place;
    MainQueue& m_queue;
    SerialPortDelegate* m_delegate = nullptr;
    QSerialPort m_line;
    RecordGatherer m_gatherer;
    HangUpWatch m_hangUpWatch;
    bool m_isOpen = false;
    // Tells data from before a close from those after it.
    unsigned m_closeCount = 0;
};

} // namespace tensio
