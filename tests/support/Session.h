#pragma once

#include "core/TensioManager.h"
#include "device-simulator/PressingStory.h"
#include "support/Fakes.h"
#include "support/ManualRunLoop.h"

namespace tensio {

// Fakes around a session manager, with a device plugged in.
struct Surroundings {
    std::shared_ptr<FakeSerialPort> port {std::make_shared<FakeSerialPort>("cu.SLAB_USBtoUART")};
    FakeSerialPortList ports;
    ManualRunLoop runLoop;
    ManualClock clock;
    MemoryUserDefaults userDefaults;
    FakeAlerts alerts {runLoop};
    FakeSaving saving;

    explicit Surroundings(std::map<std::string, float> const& settings = {})
    {
        ports.ports.push_back(port);
        userDefaults.stored = settings;
    }

    void connect(TensioManager& manager, float target) const
    {
        manager.connectAction.apply(Nothing {});
        port->delegate->serialPortWasOpened();
        manager.targetPressure.setValue(target);
    }

    // Each pressure a record, in one chunk.
    void receive(std::vector<double> const& pressures) const
    {
        std::string bytes;
        for (auto const pressure : pressures)
            bytes += deviceRecord(pressure);
        port->delegate->serialPortDidReceiveData(bytes);
    }

    // A burst, and the silence that ends it.
    void press(std::vector<double> const& pressures)
    {
        receive(pressures);
        runLoop.advance(Seconds(2.5));
    }
};

// The session manager alone.
struct Session : Surroundings {
    FakePdfRenderer pdfRenderer;
    TensioManager manager {
        ports, runLoop, clock, userDefaults, {pdfRenderer, saving, saving, saving, alerts}};

    void connect(float target = 30.0f) { Surroundings::connect(manager, target); }
    void finish() { manager.disconnectAction.apply(Nothing {}); }
};

} // namespace tensio
