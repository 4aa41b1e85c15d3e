#pragma once

#include "app/AppDelegate.h"
#include "app/HelpMenu.h"
#include "app/MainMenu.h"
#include "app/MainWindowController.h"
#include "core/DeviceRecord.h"
#include "core/SessionRecorder.h"
#include "core/TensioManager.h"
#include "output/CsvFiles.h"
#include "platform/qt/MainQueue.h"
#include "platform/qt/QtAlerts.h"
#include "platform/qt/QtRunLoop.h"
#include "platform/qt/QtSaving.h"
#include "platform/qt/QtScreen.h"
#include "platform/qt/QtSerialPortList.h"
#include "platform/qt/QtSessionStore.h"
#include "platform/qt/QtSleepInhibitor.h"
#include "platform/qt/QtUserDefaults.h"
#include "printing/PageDrawing.h"
#include "printing/QtPdfRenderer.h"
#include "printing/QtReportPrinter.h"

#include <QMenu>
#include <QObject>

namespace tensio {

// Puts the program together: the services, the one session manager and the window. Needs a
// QApplication.
class Application : public QObject {
    Q_OBJECT

public:
    Application();

    TensioManager& tensioManager() { return m_tensioManager; }
    MainWindow& window() { return m_windowController.window(); }

private:
    void keepSessions();
    void openPastSessions();

    MainQueue m_mainQueue;
    QtRunLoop m_runLoop {m_mainQueue};
    QtSerialPortList m_ports {m_mainQueue, deviceRecordFormat};
    SystemClock m_clock;
    QtUserDefaults m_userDefaults;
    QtAlerts m_alerts {m_mainQueue};
    CsvFiles m_csvFiles;
    QtSavePanel m_savePanel {m_mainQueue};
    QtFileWriter m_fileWriter;
    QtScreen m_screen;
    // The current paper of PDF files and of the printer.
    QPageLayout m_pageLayout {defaultPageLayout()};
    QtPdfRenderer m_pdfRenderer {m_pageLayout};
    QtSleepInhibitor m_sleepInhibitor;
    TensioManager m_tensioManager {m_ports, m_runLoop, m_clock, m_userDefaults,
        {m_csvFiles, m_pdfRenderer, m_savePanel, m_fileWriter, m_screen, m_alerts}};
    QtSessionStore m_sessionStore;
    SessionRecorder m_sessionRecorder {m_tensioManager, m_sessionStore, m_runLoop, m_clock};
    QMenu m_defaultTargetMenu;
    QMenu m_printMenu;
    MainWindowController m_windowController {m_tensioManager, m_runLoop, m_alerts, m_printMenu};
    QtReportPrinter m_reportPrinter {m_tensioManager, m_alerts, m_pageLayout, window()};
    AppDelegate m_delegate {m_tensioManager, m_runLoop, m_defaultTargetMenu, m_reportPrinter};
    MainMenu m_mainMenu {window(), m_defaultTargetMenu, m_printMenu, m_delegate, m_tensioManager};
    HelpMenu m_helpMenu {window(), m_ports};
    Subscriptions m_subscriptions;
};

} // namespace tensio
