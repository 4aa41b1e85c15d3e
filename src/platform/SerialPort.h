#pragma once

#include "platform/Error.h"
#include "reactive/Interface.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tensio {

// Receives the events of one port, always from the event loop, never from inside a call to the
// port.
class SerialPortDelegate : public Interface {
public:
    virtual void serialPortWasOpened() = 0;
    // The bytes are valid during the call only. Records that the port recognises are whole.
    virtual void serialPortDidReceiveData(std::string_view bytes) = 0;
    // open() failed.
    virtual void serialPortDidEncounterError(ErrorRef error) = 0;
    // Once after each serialPortWasOpened().
    virtual void serialPortWasClosed() = 0;
    // The device was lost; serialPortWasClosed() follows.
    virtual void serialPortWasRemovedFromSystem() = 0;
};

enum class Parity { None, Odd, Even };

// One serial line. Settings are made before open().
class SerialPort : public Interface {
public:
    virtual std::string name() const = 0;
    // True when another program, not a cable, is at the other end: readings are simulated.
    virtual bool isVirtual() const = 0;
    // Not owned; must outlive the port or be replaced by nullptr.
    virtual void setDelegate(SerialPortDelegate* delegate) = 0;
    // Bits per second.
    virtual void setBaudRate(int baudRate) = 0;
    virtual void setParity(Parity parity) = 0;
    // 1 or 2.
    virtual void setNumberOfStopBits(int count) = 0;
    // The delegate is notified of the result. Does nothing while the port is open.
    virtual void open() = 0;
    // Does nothing, and notifies nobody, when the port is closed.
    virtual void close() = 0;
};

// What is plugged in now, real ports first.
class SerialPortList : public Interface {
public:
    // New objects at each call. The list must outlive them.
    virtual std::vector<std::shared_ptr<SerialPort>> availablePorts() = 0;
};

} // namespace tensio
