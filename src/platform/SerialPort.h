#pragma once

#include "platform/Error.h"
#include "reactive/Interface.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tensio {

// Hears of the life of one port, always from the event loop, never from inside a call to the port.
class SerialPortDelegate : public Interface {
public:
    virtual void serialPortWasOpened() = 0;
    virtual void serialPortDidReceiveData(std::string_view bytes) = 0;
    virtual void serialPortDidEncounterError(ErrorRef error) = 0;
    virtual void serialPortWasClosed() = 0;
    virtual void serialPortWasRemovedFromSystem() = 0;
};

enum class Parity { None, Odd, Even };

// One serial line. Settings are made before open().
class SerialPort : public Interface {
public:
    virtual std::string name() const = 0;
    // No cable but another program is at the other end: readings are simulated.
    virtual bool isVirtual() const = 0;
    // The delegate is not owned; it must outlive the port or be taken back with nullptr.
    virtual void setDelegate(SerialPortDelegate* delegate) = 0;
    virtual void setBaudRate(int baudRate) = 0;
    virtual void setParity(Parity parity) = 0;
    virtual void setNumberOfStopBits(int count) = 0;
    virtual void open() = 0;
    virtual void close() = 0;
};

// What is plugged in now, real ports first.
class SerialPortList : public Interface {
public:
    virtual std::vector<std::shared_ptr<SerialPort>> availablePorts() = 0;
};

} // namespace tensio
