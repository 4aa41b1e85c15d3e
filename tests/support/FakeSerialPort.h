#pragma once

#include "platform/SerialPort.h"

#include <string>
#include <utility>
#include <vector>

namespace tensio {

// A port without a line: records the calls, and a test plays the events through its delegate.
struct FakeSerialPort : SerialPort {
    explicit FakeSerialPort(std::string name)
        : m_name(std::move(name))
    {
    }

    bool isSimulator = false;
    std::vector<std::string> calls;
    SerialPortDelegate* delegate = nullptr;

    std::string name() const override { return m_name; }
    bool isVirtual() const override { return isSimulator; }
    void setDelegate(SerialPortDelegate* newDelegate) override { delegate = newDelegate; }
    void setBaudRate(int rate) override { calls.push_back("baud rate " + std::to_string(rate)); }
    void setParity(Parity parity) override
    {
        calls.emplace_back(parity == Parity::None ? "no parity" : "parity");
    }
    void setNumberOfStopBits(int n) override { calls.push_back("stop bits " + std::to_string(n)); }
    void open() override { calls.emplace_back("open"); }
    void close() override { calls.emplace_back("close"); }

    void playLoss() const
    {
        // As the real port does: first the device goes, then its port.
        auto* const listener = delegate;
        listener->serialPortWasRemovedFromSystem();
        listener->serialPortWasClosed();
    }

private:
    std::string m_name;
};

struct FakeSerialPortList : SerialPortList {
    std::vector<std::shared_ptr<SerialPort>> ports;

    std::vector<std::shared_ptr<SerialPort>> availablePorts() override { return ports; }
};

} // namespace tensio
