#include "app/Application.h"

#include "app/PastSessionsWindow.h"
#include "core/DateText.h"
#include "platform/SleepInhibitor.h"

#include <QApplication>

namespace tensio {

namespace {

QString titleOf(SessionSummary const& session)
{
    auto const date = QString::fromStdString(dateAndMinute(session.start));
    return QString::fromStdString(session.name) + QStringLiteral("　") + date;
}

} // namespace

Application::Application(Services services)
    : m_services(services)
    , m_tensioManager(services.ports, services.runLoop, services.clock, services.userDefaults,
          {m_pdfRenderer, services.savePanel, services.fileWriter, services.screen,
              services.alerts})
    , m_sessionArchive(m_tensioManager, services.sessionStore, services.runLoop, services.clock)
    , m_windowController(m_tensioManager, services.runLoop, services.alerts)
    , m_reportPrinter(
          m_tensioManager, services.printPanels, services.alerts, m_pageLayout, window())
    , m_delegate(m_tensioManager, services.runLoop, m_windowController.defaultTargetMenu(),
          m_reportPrinter)
    , m_mainMenu(window(), m_windowController.defaultTargetMenu(), m_windowController.printMenu(),
          m_delegate, m_tensioManager)
    , m_helpMenu(window(), services.portInspector)
{
    m_windowController.addCommands(m_mainMenu.measurementMenu(), m_mainMenu.viewMenu());
    m_windowController.fitToDesign();
    m_delegate.applicationDidFinishLaunching();
    QApplication::setQuitOnLastWindowClosed(
        m_delegate.applicationShouldTerminateAfterLastWindowClosed());
    m_subscriptions.push_back(m_tensioManager.isMeasuring.observeChanges(
        [this](bool isMeasuring) { m_services.sleepInhibitor.setInhibited(isMeasuring); }));
    keepSessions();
    connect(qApp, &QCoreApplication::aboutToQuit, this,
        [this] { m_delegate.applicationWillTerminate(); });
    // Whether the program ends is decided later, and may not be in time for the port.
    connect(qApp, &QGuiApplication::commitDataRequest, this, &Application::finish);
}

void Application::finish()
{
    m_tensioManager.disconnectAction.apply(Nothing {});
}

void Application::keepSessions()
{
    m_windowController.showNotices(m_sessionArchive);
    m_mainMenu.addPastSessions(m_sessionArchive.canOpen, [this] { openPastSessions(); });
    m_subscriptions.push_back(m_sessionArchive.shown.observe([this](auto const& session) {
        m_windowController.showPastSessionInTitle(session ? titleOf(*session) : QString());
    }));
}

void Application::openPastSessions()
{
    auto* sessions = new PastSessionsWindow(m_sessionArchive, window());
    sessions->setAttribute(Qt::WA_DeleteOnClose);
    sessions->open();
}

} // namespace tensio
