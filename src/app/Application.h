#pragma once

#include "app/AppDelegate.h"
#include "app/MainMenu.h"
#include "app/MainWindowController.h"
#include "app/Services.h"
#include "core/SessionArchive.h"
#include "core/TensioManager.h"
#include "printing/PageDrawing.h"
#include "printing/QtPdfRenderer.h"
#include "sessions/SessionCommands.h"

#include <QObject>

namespace tensio {

// Puts the program together: the one session manager, the archive of sessions, the window and its
// menus. Needs a QApplication.
class Application : public QObject {
    Q_OBJECT

public:
    explicit Application(Services services);

    TensioManager& tensioManager() { return m_tensioManager; }
    // Finishes a session that runs and closes its port.
    void finish();
    MainWindow& window() { return m_windowController.window(); }

private:
    // The current paper of PDF files and of the printer.
    QPageLayout m_pageLayout {defaultPageLayout()};
    QtPdfRenderer m_pdfRenderer {m_pageLayout};
    TensioManager m_tensioManager;
    SessionArchive m_sessionArchive;
    MainWindowController m_windowController;
    PrintingServices m_printing;
    AppDelegate m_delegate;
    SessionCommands m_sessionCommands;
    MainMenu m_mainMenu;
    Subscriptions m_subscriptions;
};

} // namespace tensio
