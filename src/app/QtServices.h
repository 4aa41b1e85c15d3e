#pragma once

#include "app/Services.h"
#include "core/DeviceRecord.h"
#include "platform/qt/MainQueue.h"
#include "platform/qt/MakeSleepInhibitor.h"
#include "platform/qt/QtAlerts.h"
#include "platform/qt/QtRunLoop.h"
#include "platform/qt/QtSaving.h"
#include "platform/qt/QtScreen.h"
#include "platform/qt/QtSerialPortList.h"
#include "platform/qt/QtSessionStore.h"
#include "platform/qt/QtUserDefaults.h"
#include "printing/QtPrintPanels.h"

namespace tensio {

// The real services. Needs a QApplication.
class QtServices {
public:
    // Valid as long as this object and the clock.
    Services services(Clock const& clock)
    {
        return {m_ports, m_ports, m_runLoop, clock, m_userDefaults, m_alerts, m_savePanel,
            m_fileWriter, m_screen, m_printPanels, m_sessionStore, *m_sleepInhibitor};
    }

    // The window that screenshots show. Not owned; must outlive their use.
    void setMainWindow(QWidget& window) { m_screen.setMainWindow(window); }

private:
    MainQueue m_mainQueue;
    QtRunLoop m_runLoop {m_mainQueue};
    QtSerialPortList m_ports {m_mainQueue, tonguePressureDevice};
    QtUserDefaults m_userDefaults;
    QtAlerts m_alerts {m_mainQueue};
    QtSavePanel m_savePanel {m_mainQueue};
    QtFileWriter m_fileWriter;
    QtScreen m_screen {m_mainQueue};
    QtPrintPanels m_printPanels;
    QtSessionStore m_sessionStore;
    std::unique_ptr<SleepInhibitor> m_sleepInhibitor = makeSleepInhibitor();
};

} // namespace tensio
