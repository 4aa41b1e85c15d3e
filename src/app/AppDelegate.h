#pragma once

#include "output/Reports.h"
#include "platform/RunLoop.h"
#include "platform/qt/QtMenu.h"

#include <QSystemTrayIcon>

#include <functional>

namespace tensio {

// What the application does at the ends of its life, and the commands of its menus.
class AppDelegate {
public:
    // A command of the menus.
    using Action = void (AppDelegate::*)();
    // Prints a report that there is.
    using Print = std::function<void(ReportKind)>;

    // What is handed in must outlive the delegate.
    AppDelegate(
        TensioManager& tensioManager, RunLoop& runLoop, QMenu& defaultTargetMenu, Print print);

    // Fills the menu of default targets and shows it in the system's status bar, where there is
    // one.
    void applicationDidFinishLaunching();
    void applicationWillTerminate();

    void saveCsvAction();
    void saveSelectedAction();
    void saveAsListAction();
    void saveAsGridAction();
    // A moment later, when the menu that it was chosen from has left the screen.
    void saveScreenshotAction();
    void printAsListAction();
    void printAsGridAction();
    void printSelectedAction();

    // The command makes sense now. A command is run only then.
    bool validateMenuItem(Action action) const;

private:
    void saveAsPdf(ReportKind kind);

    TensioManager& m_tensioManager;
    RunLoop& m_runLoop;
    QtMenu m_defaultTargetMenu;
    QSystemTrayIcon m_statusItem;
    Print m_print;
    Subscription m_screenshot;
};

} // namespace tensio
