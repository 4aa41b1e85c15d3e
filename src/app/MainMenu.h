#pragma once

#include "app/AppDelegate.h"
#include "reactive/Subscription.h"

#include <QKeySequence>
#include <QObject>

#include <utility>
#include <vector>

class QAction;
class QMainWindow;
class QMenu;

namespace tensio {

class MainWindowController;
class SessionCommands;

// The menu bar of the main window but for the help: the delegate's commands, each enabled while the
// delegate says so, those of stored sessions and of the panels, the full screen, and the menu of
// default targets. It gives the print menu, which the header's button opens as well, its commands.
class MainMenu : public QObject {
    Q_OBJECT

public:
    MainMenu(MainWindowController& windowController, AppDelegate& delegate,
        SessionCommands& sessionCommands, TensioManager const& tensioManager);

private:
    void addFileMenu(SessionCommands& sessionCommands);
    QMenu& addViewMenu();
    void addPrintMenu(QMenu& menu);
    void add(QMenu& menu, QString const& title, AppDelegate::Command command,
        QKeySequence const& shortcut = {});
    void validate();

    QMainWindow& m_window;
    AppDelegate& m_delegate;
    std::vector<std::pair<QAction*, AppDelegate::Command>> m_commands;
    Subscriptions m_subscriptions;
};

} // namespace tensio
