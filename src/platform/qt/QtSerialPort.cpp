#include "platform/qt/QtSerialPort.h"

#include "platform/qt/MainQueue.h"
#include "platform/qt/OpenError.h"

#include <QPointer>

#include <utility>

namespace tensio {

QtSerialPort::QtSerialPort(Place place, RecordShape shape, Scheduler& scheduler, MainQueue& queue)
    : m_place(std::move(place))
    , m_queue(queue)
    , m_gatherer(
          scheduler, shape, [this](std::string_view chunk) { tellOfData(std::string(chunk)); })
    , m_hangUpWatch([this] { lose(); })
{
    m_line.setPortName(m_place.node);
    connect(&m_line, &QSerialPort::readyRead, this, &QtSerialPort::readyRead);
    // A direct slot: after a hang-up Qt repeats the error without end until the line is closed.
    connect(&m_line, &QSerialPort::errorOccurred, this, [this](QSerialPort::SerialPortError error) {
        if (m_isOpen && error != QSerialPort::NoError)
            lose();
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
        tell([error = openError(m_line, m_place.node)](
                 SerialPortDelegate& delegate) { delegate.serialPortDidEncounterError(error); });
        return;
    }
    // The system keeps bytes from before; they belong to nobody's measurement.
    m_line.clear(QSerialPort::Input);
    m_isOpen = true;
    m_hangUpWatch.start(m_line.handle());
    tell([](SerialPortDelegate& delegate) { delegate.serialPortWasOpened(); });
}

void QtSerialPort::close()
{
    ++m_closeCount;
    if (!m_isOpen)
        return;
    m_gatherer.discard();
    closeLine();
    tell([](SerialPortDelegate& delegate) { delegate.serialPortWasClosed(); });
}

void QtSerialPort::readyRead()
{
    auto const bytes = m_line.readAll();
    m_gatherer.receive(std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size())));
}

void QtSerialPort::lose()
{
    if (!m_isOpen)
        return;
    readyRead();
    m_gatherer.flush();
    closeLine();
    tell([](SerialPortDelegate& delegate) { delegate.serialPortWasRemovedFromSystem(); });
    tell([](SerialPortDelegate& delegate) { delegate.serialPortWasClosed(); });
}

void QtSerialPort::closeLine()
{
    m_hangUpWatch.stop();
    if (!std::exchange(m_isOpen, false))
        return;
    m_line.close();
}

void QtSerialPort::tellOfData(std::string bytes)
{
    tell([this, count = m_closeCount, bytes = std::move(bytes)](SerialPortDelegate& delegate) {
        if (count == m_closeCount)
            delegate.serialPortDidReceiveData(bytes);
    });
}

void QtSerialPort::tell(std::function<void(SerialPortDelegate&)> message)
{
    m_queue.post([self = QPointer(this), message = std::move(message)] {
        if (self && self->m_delegate)
            message(*self->m_delegate);
    });
}

} // namespace tensio
