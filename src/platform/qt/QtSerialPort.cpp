#include "platform/qt/QtSerialPort.h"

#include "platform/qt/MainQueue.h"
#include "platform/qt/OpenError.h"

#include <QPointer>

#include <utility>

namespace tensio {

QtSerialPort::QtSerialPort(
    Location location, RecordFormat format, Scheduler& scheduler, MainQueue& queue)
    : m_location(std::move(location))
    , m_queue(queue)
    , m_gatherer(
          scheduler, format, [this](std::string_view chunk) { notifyData(std::string(chunk)); })
    , m_hangUpWatch([this] { handleLoss(); })
{
    m_line.setPortName(m_location.device);
    connect(&m_line, &QSerialPort::readyRead, this, &QtSerialPort::readAvailable);
    // A direct slot: after a hang-up Qt emits the error endlessly until the line is closed.
    connect(&m_line, &QSerialPort::errorOccurred, this, [this](QSerialPort::SerialPortError error) {
        if (m_isOpen && error != QSerialPort::NoError)
            handleLoss();
    });
}

QtSerialPort::~QtSerialPort()
{
    m_delegate = nullptr;
    closeLine();
}

void QtSerialPort::setBaudRate(int baudRate)
{
    m_line.setBaudRate(baudRate);
}

void QtSerialPort::setParity(Parity parity)
{
    switch (parity) {
    case Parity::None:
        m_line.setParity(QSerialPort::NoParity);
        break;
    case Parity::Odd:
        m_line.setParity(QSerialPort::OddParity);
        break;
    case Parity::Even:
        m_line.setParity(QSerialPort::EvenParity);
        break;
    }
}

void QtSerialPort::setNumberOfStopBits(int count)
{
    m_line.setStopBits(count == 2 ? QSerialPort::TwoStop : QSerialPort::OneStop);
}

void QtSerialPort::open()
{
    if (m_isOpen)
        return;
    if (!m_line.open(QIODevice::ReadOnly)) {
        notifyDelegate(
            [error = openError(m_line, m_location.device)](
                SerialPortDelegate& delegate) { delegate.serialPortDidEncounterError(error); });
        return;
    }
    // Bytes that the system kept from before the opening belong to no measurement.
    m_line.clear(QSerialPort::Input);
    m_isOpen = true;
    m_hangUpWatch.start(m_line.handle());
    notifyDelegate([](SerialPortDelegate& delegate) { delegate.serialPortWasOpened(); });
}

void QtSerialPort::close()
{
    ++m_openGeneration;
    if (!m_isOpen)
        return;
    m_gatherer.discard();
    closeLine();
    notifyDelegate([](SerialPortDelegate& delegate) { delegate.serialPortWasClosed(); });
}

void QtSerialPort::readAvailable()
{
    auto const bytes = m_line.readAll();
    m_gatherer.receive(std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size())));
}

void QtSerialPort::handleLoss()
{
    if (!m_isOpen)
        return;
    readAvailable();
    m_gatherer.flush();
    closeLine();
    notifyDelegate([](SerialPortDelegate& delegate) { delegate.serialPortWasRemovedFromSystem(); });
    notifyDelegate([](SerialPortDelegate& delegate) { delegate.serialPortWasClosed(); });
}

void QtSerialPort::closeLine()
{
    m_hangUpWatch.stop();
    if (!std::exchange(m_isOpen, false))
        return;
    m_line.close();
}

void QtSerialPort::notifyData(std::string bytes)
{
    notifyDelegate([this, generation = m_openGeneration, bytes = std::move(bytes)](
                       SerialPortDelegate& delegate) {
        if (generation == m_openGeneration)
            delegate.serialPortDidReceiveData(bytes);
    });
}

void QtSerialPort::notifyDelegate(std::function<void(SerialPortDelegate&)> message)
{
    m_queue.post([self = QPointer(this), message = std::move(message)] {
        if (self && self->m_delegate)
            message(*self->m_delegate);
    });
}

} // namespace tensio
