#pragma once

#include "core/TensioManager.h"
#include "platform/qt/QtMenu.h"
#include "printing/ReportPrinter.h"

#include <QSystemTrayIcon>

namespace tensio {

// Start-up, shutdown and the commands of the menus.
class AppDelegate {
public:
    using Command = void (AppDelegate::*)();

    AppDelegate(TensioManager& tensioManager, RunLoop& runLoop, QMenu& defaultTargetMenu,
        ReportPrinter& reportPrinter);

    // Not shown, and without a menu, until launching has finished.
    QSystemTrayIcon const& statusItem() const { return m_statusItem; }

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
    void printAsListAction() { m_reportPrinter.print(ReportKind::List); }
    void printAsGridAction() { m_reportPrinter.print(ReportKind::Grid); }
    void printSelectedAction() { m_reportPrinter.print(ReportKind::Selected); }
    void printAsCurvesAction() { m_reportPrinter.print(ReportKind::Curves); }

    // True if the command is enabled. Commands must not be run otherwise.
    bool validateMenuItem(Command command) const;

private:
    void saveAsPdf(ReportKind kind);

    TensioManager& m_tensioManager;
    RunLoop& m_runLoop;
    QMenu& m_statusMenu;
    QtMenu m_defaultTargetMenu;
    QSystemTrayIcon m_statusItem;
    ReportPrinter& m_reportPrinter;
    Subscription m_screenshot;
};

} // namespace tensio
