#pragma once

#include "app/MainWindow.h"
#include "app/TensioViewController.h"

#include <QMenu>
#include <QObject>

namespace tensio {

// Opens the main window on the root view and keeps both at the same size.
class MainWindowController : public QObject {
    Q_OBJECT

public:
    MainWindowController(TensioManager& tensioManager, SessionArchive& sessionArchive,
        RunLoop& runLoop, Alerts& alerts);

    MainWindow& window() { return m_window; }
    // Both empty; of the window, so that they follow its scale.
    QMenu& printMenu() { return m_printMenu; }
    QMenu& defaultTargetMenu() { return m_defaultTargetMenu; }
    TensioViewController& content() { return m_contentController; }
    // Places the window, at a size that suits its screen, in the middle; once the menu bar is
    // filled.
    void fitToDesign();

private:
    void windowDidLoad();

    MainWindow m_window;
    QMenu& m_printMenu {*new QMenu(&m_window)};
    QMenu& m_defaultTargetMenu {*new QMenu(&m_window)};
    TensioViewController m_contentController;
    Subscription m_title;
};

} // namespace tensio
