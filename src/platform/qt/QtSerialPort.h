#pragma once

#include "platform/RecordGatherer.h"
#include "platform/SerialPort.h"
#include "platform/qt/HangUpWatch.h"

#include <QObject>
#include <QSerialPort>

#include <functional>

namespace tensio {

class MainQueue;

// A port of the operating system. Its delegate is notified through the queue, so that it may open
// an alert. The loss of the device is reported as removed and closed, not as an error.
class QtSerialPort
    : public QObject
    , public SerialPort {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(QtSerialPort)

public:
    struct Location {
        std::string name;
        // The path of the device file, or the system's name of the port.
        QString device;
        bool isVirtual = false;
    };

    QtSerialPort(Location location, RecordFormat format, Scheduler& scheduler, MainQueue& queue);
    ~QtSerialPort() override;

    std::string name() const override { return m_location.name; }
    bool isVirtual() const override { return m_location.isVirtual; }
    QString const& device() const { return m_location.device; }
    bool isOpen() const { return m_isOpen; }
    void setDelegate(SerialPortDelegate* delegate) override { m_delegate = delegate; }
    void setBaudRate(int baudRate) override;
    void setParity(Parity parity) override;
    void setNumberOfStopBits(int count) override;
    void open() override;
    // Drops the data that have not been delivered yet; the caller no longer wants them.
    void close() override;

private:
    void readAvailable();
    void handleLoss();
    void closeLine();
    void notifyData(std::string bytes);
    void notifyDelegate(std::function<void(SerialPortDelegate&)> message);

    Location m_location;
    MainQueue& m_queue;
    SerialPortDelegate* m_delegate = nullptr;
    QSerialPort m_line;
    RecordGatherer m_gatherer;
    HangUpWatch m_hangUpWatch;
    bool m_isOpen = false;
    // Changes at each close(), so that data received before it are recognised and dropped.
    unsigned m_openGeneration = 0;
};

} // namespace tensio
