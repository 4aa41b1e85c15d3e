#include "core/SerialPortManager.h"

#include "core/DeviceRecord.h"
#include "core/TensioError.h"

#include <utility>

namespace tensio {

namespace {

constexpr int baudRate = 19200;

ErrorRef noPortError()
{
    auto error = std::make_shared<TensioError>(TensioError::noDevicePort);
    error->customMessage = "COMポートがオープンできません。";
    return error;
}

} // namespace

SerialPortManager::SerialPortManager(SerialPortList& serialPortList)
    : m_serialPortList(serialPortList)
{
}

SerialPortManager::~SerialPortManager()
{
    if (m_serialPort)
        m_serialPort->setDelegate(nullptr);
}

SignalProducer<Nothing, ErrorRef> SerialPortManager::connect()
{
    return SignalProducer<Nothing, ErrorRef>([this](auto const& observer) { start(observer); });
}

void SerialPortManager::start(Observer<Nothing, ErrorRef> const& observer)
{
    m_observer = observer;
    isSimulated.setValue(false);
    for (auto const& port : m_serialPortList.availablePorts()) {
        if (port->name().find(tonguePressureDevice.portNameFragment) != std::string::npos) {
            open(port);
            return;
        }
    }
    observer.sendFailed(noPortError());
}

void SerialPortManager::open(std::shared_ptr<SerialPort> port)
{
    // A port left by an earlier, failed attempt must not report to the new subscriber.
    if (m_serialPort && m_serialPort != port)
        m_serialPort->setDelegate(nullptr);
    m_serialPort = std::move(port);
    m_serialPort->setDelegate(this);
    m_serialPort->setBaudRate(baudRate);
    m_serialPort->setParity(Parity::None);
    m_serialPort->setNumberOfStopBits(1);
    m_serialPort->open();
}

void SerialPortManager::disconnect()
{
    m_observer.sendCompleted();
    if (auto const port = std::exchange(m_serialPort, nullptr)) {
        // Later events of this port must not reach the subscriber of the next connection.
        port->setDelegate(nullptr);
        port->close();
    }
}

void SerialPortManager::serialPortWasOpened()
{
    isSimulated.setValue(m_serialPort && m_serialPort->isVirtual());
    m_observer.sendValue(Nothing {});
}

void SerialPortManager::serialPortDidReceiveData(std::string_view bytes)
{
    for (auto const value : readRecords(bytes))
        pressure.setValue(value);
}

void SerialPortManager::serialPortDidEncounterError(ErrorRef error)
{
    m_observer.sendFailed(std::move(error));
}

void SerialPortManager::serialPortWasClosed()
{
    m_observer.sendInterrupted();
}

} // namespace tensio
