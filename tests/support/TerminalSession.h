#pragma once

#include "core/DeviceRecord.h"
#include "core/TensioManager.h"
#include "output/CsvReport.h"
#include "platform/qt/MainQueue.h"
#include "platform/qt/QtSerialPort.h"
#include "support/Fakes.h"
#include "support/PseudoTerminal.h"

#include <QTest>

namespace tensio {

// A list of one real port, on a terminal, under the device's name.
class TerminalPortList : public SerialPortList {
public:
    TerminalPortList(std::string const& path, Scheduler& scheduler, MainQueue& queue)
        : m_path(path)
        , m_scheduler(scheduler)
        , m_queue(queue)
    {
    }

    std::vector<std::shared_ptr<SerialPort>> availablePorts() override
    {
        QtSerialPort::Location const location {
            SerialPortManager::deviceNameFragment, QString::fromStdString(m_path)};
        return {std::make_shared<QtSerialPort>(location, deviceRecordShape, m_scheduler, m_queue)};
    }

private:
    std::string const& m_path;
    Scheduler& m_scheduler;
    MainQueue& m_queue;
};

// The session manager with a real port on a terminal; everything else is fake. The loop and the
// queue must outlive it.
struct TerminalSession {
    PseudoTerminal terminal;
    MainQueue& queue;
    RunLoop& runLoop;
    TerminalPortList ports {terminal.path(), runLoop, queue};
    ManualClock clock;
    MemoryUserDefaults userDefaults {{}};
    FakeAlerts alerts;
    FakeSaving saving;
    CsvReport csvReport;
    FakePdfRenderer pdfRenderer;
    TensioManager manager {ports, runLoop, clock, userDefaults,
        {csvReport, pdfRenderer, saving, saving, saving, alerts}};

    TerminalSession(MainQueue& theQueue, RunLoop& theRunLoop)
        : queue(theQueue)
        , runLoop(theRunLoop)
    {
    }

    // Whether the port opens.
    bool connect()
    {
        bool isOpen = false;
        auto const observing = manager.connectAction.observe([&](auto const& event) {
            isOpen = std::holds_alternative<ValueEvent<Nothing>>(event);
        });
        manager.connectAction.apply(Nothing {});
        return QTest::qWaitFor([&] { return isOpen; });
    }
};

} // namespace tensio
