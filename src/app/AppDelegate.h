#pragma once

#include "core/TensioManager.h"
#include "platform/qt/QtMenu.h"
#include "printing/PrintPreview.h"

#include <QSystemTrayIcon>

namespace tensio {

// Start-up, shutdown and the commands of the menus.
class AppDelegate {
public:
    using Command = void (AppDelegate::*)();

    // Previews belong to the window.
    AppDelegate(PrintingServices const& printing, RunLoop& runLoop, QMenu& defaultTargetMenu,
        QWidget& window);

    // Gives the status item the menu of default targets, fills the menu, and shows the item where
    // there is a status bar.
    void applicationDidFinishLaunching();
    void applicationWillTerminate() { m_tensioManager.serialPortManager.disconnect(); }
    // NOLINTNEXTLINE(readability-convert-member-functions-to-static): asked of the delegate.
    bool applicationShouldTerminateAfterLastWindowClosed() const { return true; }

    void saveCsvAction() { m_tensioManager.saveCsv(); }
    void saveSelectedAction() { m_tensioManager.saveSelectedCsv(); }
    void saveAsListAction() { saveAsPdf(ReportKind::List); }
    void saveAsGridAction() { saveAsPdf(ReportKind::Grid); }
    void saveAsCurvesAction() { saveAsPdf(ReportKind::Curves); }
    // A moment later, when the menu that it was chosen from has left the screen.
    void saveScreenshotAction();
    void printAsListAction() { print(ReportKind::List); }
    void printAsGridAction() { print(ReportKind::Grid); }
    void printSelectedAction() { print(ReportKind::Selected); }
    void printAsCurvesAction() { print(ReportKind::Curves); }

    // True if the command is enabled. Commands must not be run otherwise.
    bool validateMenuItem(Command command) const;

private:
    void saveAsPdf(ReportKind kind);
    void print(ReportKind kind);

    PrintingServices m_printing;
    TensioManager& m_tensioManager {m_printing.tensioManager};
    RunLoop& m_runLoop;
    QMenu& m_statusMenu;
    QtMenu m_defaultTargetMenu;
    QSystemTrayIcon m_statusItem;
    QWidget& m_window;
    Subscription m_screenshot;
};

} // namespace tensio
