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
    // Everything handed in must outlive the controller.
    MainWindowController(TensioManager& tensioManager, RunLoop& runLoop, Alerts& alerts);

    MainWindow& window() { return m_window; }
    // Both empty; of the window, so that they follow its scale.
    QMenu& printMenu() { return m_printMenu; }
    QMenu& defaultTargetMenu() { return m_defaultTargetMenu; }
    // Which stored session the window shows; empty when it shows the latest connection's.
    void showPastSessionInTitle(QString const& session);
    void showNotices(SessionArchive& archive) { m_contentController.showNotices(archive); }
    void addCommands(QMenu& measurementMenu, QMenu& viewMenu)
    {
        m_contentController.addCommands(measurementMenu, viewMenu);
    }
    // Places the window, at a size that suits its screen, in the middle; once the menu bar is
    // filled.
    void fitToDesign();

private:
    void windowDidLoad();
    // Simulated readings must never pass for a subject's.
    void showSimulationInTitle(bool isSimulated);
    void updateTitle();

    MainWindow m_window;
    QMenu& m_printMenu {*new QMenu(&m_window)};
    QMenu& m_defaultTargetMenu {*new QMenu(&m_window)};
    TensioViewController m_contentController;
    bool m_isSimulated = false;
    QString m_pastSession;
    Subscriptions m_subscriptions;
};

} // namespace tensio
