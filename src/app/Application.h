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
#include "printing/PrintPreviewController.h"
#include "printing/QtPdfRenderer.h"
#include "printing/QtPrintPanels.h"

#include <QMenu>
#include <QObject>

#include <memory>

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
    void print(ReportKind kind);
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
    QPageLayout m_pageLayout {defaultPageLayout()};
    QtPdfRenderer m_pdfRenderer {m_pageLayout};
    QtPrintPanels m_printPanels;
    QtSleepInhibitor m_sleepInhibitor;
    TensioManager m_tensioManager {m_ports, m_runLoop, m_clock, m_userDefaults,
        {m_csvFiles, m_pdfRenderer, m_savePanel, m_fileWriter, m_screen, m_alerts}};
    QtSessionStore m_sessionStore;
    SessionRecorder m_sessionRecorder {m_tensioManager, m_sessionStore, m_runLoop, m_clock};
    QMenu m_defaultTargetMenu;
    MainWindowController m_windowController {m_tensioManager, m_runLoop, m_alerts};
    // While the preview is open.
    std::unique_ptr<PrintPreviewController> m_printPreview;
    AppDelegate m_delegate {
        m_tensioManager, m_runLoop, m_defaultTargetMenu, [this](ReportKind kind) { print(kind); }};
    MainMenu m_mainMenu {window(), m_defaultTargetMenu, m_delegate, m_tensioManager};
    HelpMenu m_helpMenu {window(), m_ports};
    Subscriptions m_subscriptions;
};

// Typeface, language and look of every window; before the first window is made.
void prepareLook();

} // namespace tensio
