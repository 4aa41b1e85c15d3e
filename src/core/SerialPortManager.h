#pragma once

#include "platform/SerialPort.h"
#include "reactive/MutableProperty.h"
#include "reactive/SignalProducer.h"

#include <memory>

namespace tensio {

// Talks to the device: finds its port, opens it, turns the bytes it sends into pressures and
// reports the events of the port to the subscriber of the latest connect().
class SerialPortManager : public SerialPortDelegate {
public:
    explicit SerialPortManager(SerialPortList& serialPortList);
    SerialPortManager(SerialPortManager const&) = delete;
    SerialPortManager& operator=(SerialPortManager const&) = delete;
    ~SerialPortManager() override;

    // The last pressure read, kPa; every record publishes one value.
    MutableProperty<float> pressure {0.0f};
    // The readings shown are simulated: those of this connection or of the restored session.
    MutableProperty<bool> isSimulated {false};

    // Each start looks for the port and opens it: a value when it has opened, a failure when there
    // is none or it does not open, an interruption when it closes, completion at disconnect().
    SignalProducer<Nothing, ErrorRef> connect();
    // Completes the connection and closes the port, whose later events are ignored.
    void disconnect();

    void serialPortWasOpened() override;
    void serialPortDidReceiveData(std::string_view bytes) override;
    void serialPortDidEncounterError(ErrorRef error) override;
    void serialPortWasClosed() override;
    void serialPortWasRemovedFromSystem() override { }

private:
    void start(Observer<Nothing, ErrorRef> const& observer);
    void open(std::shared_ptr<SerialPort> port);

    SerialPortList& m_serialPortList;
    std::shared_ptr<SerialPort> m_serialPort;
    // Of the latest connect().
    Observer<Nothing, ErrorRef> m_observer {[](auto const&) {}};
};

} // namespace tensio
