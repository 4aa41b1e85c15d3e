#include "app/Application.h"

#include "app/PastSessionsWindow.h"
#include "core/DateText.h"

#include <QApplication>

namespace tensio {

namespace {

QString titleOf(SessionSummary const& session)
{
    auto const date = QString::fromStdString(formatLocalTime(session.start, "%Y/%m/%d %H:%M"));
    return QString::fromStdString(session.name) + QStringLiteral("　") + date;
}

} // namespace

Application::Application()
{
    m_screen.setMainWindow(window());
    m_windowController.addCommands(m_mainMenu.measurementMenu(), m_mainMenu.viewMenu());
    m_windowController.fitToDesign();
    m_delegate.applicationDidFinishLaunching();
    QApplication::setQuitOnLastWindowClosed(
        m_delegate.applicationShouldTerminateAfterLastWindowClosed());
    m_subscriptions.push_back(m_tensioManager.serialPortManager.isSimulated.observe(
        [this](bool isSimulated) { m_pdfRenderer.setSimulated(isSimulated); }));
    m_subscriptions.push_back(m_tensioManager.isMeasuring.observeChanges(
        [this](bool isMeasuring) { m_sleepInhibitor.setInhibited(isMeasuring); }));
    keepSessions();
    connect(qApp, &QCoreApplication::aboutToQuit, this,
        [this] { m_delegate.applicationWillTerminate(); });
}

void Application::keepSessions()
{
    m_windowController.showNotices(m_sessionRecorder, m_sessionStore);
    m_mainMenu.addPastSessions(m_sessionRecorder.canOpen, [this] { openPastSessions(); });
    m_subscriptions.push_back(m_sessionRecorder.pastSession.observe([this](auto const& session) {
        m_windowController.showPastSessionInTitle(session ? titleOf(*session) : QString());
    }));
}

void Application::openPastSessions()
{
    auto* sessions = new PastSessionsWindow(m_sessionRecorder, m_sessionStore, window());
    sessions->setAttribute(Qt::WA_DeleteOnClose);
    sessions->open();
}

} // namespace tensio
