#include "app/Application.h"

#include "app/HelpMenu.h"
#include "output/CoursePrintView.h"
#include "platform/Saving.h"
#include "platform/SleepInhibitor.h"

#include <QApplication>

using namespace Qt::StringLiterals;

namespace tensio {

Application::Application(Services services)
    : m_tensioManager(services.ports, services.runLoop, services.clock, services.userDefaults,
        {m_pdfRenderer, services.savePanel, services.fileWriter, services.screen, services.alerts})
    , m_sessionArchive(m_tensioManager, services.sessionStore, services.runLoop, services.clock)
    , m_windowController(m_tensioManager, m_sessionArchive, services.runLoop, services.alerts)
    , m_printing {m_tensioManager, services.printPanels, services.alerts, m_pageLayout}
    , m_delegate(m_printing, services.runLoop, m_windowController.defaultTargetMenu(), window())
    , m_sessionCommands(m_sessionArchive,
          {services.savePanel, services.fileWriter, services.clock,
              [this](Course const& course, QWidget& list) {
                  (new PrintPreview(m_printing, list))
                      ->showReport(std::make_unique<CoursePrintView>(course), u"経過"_s);
              }},
          window())
    , m_mainMenu(m_windowController, m_delegate, m_sessionCommands, m_tensioManager)
{
    addHelpMenu(window(), services.portInspector);
    connect(&m_windowController.content().history(), &HistoryViewController::willPrintCurve, this,
        [this](auto const& measurement) {
            (new PrintPreview(m_printing, window()))
                ->showReport(makeCurve(measurement, m_tensioManager), u"波形"_s);
        });
    m_windowController.fitToDesign();
    m_delegate.applicationDidFinishLaunching();
    QApplication::setQuitOnLastWindowClosed(
        m_delegate.applicationShouldTerminateAfterLastWindowClosed());
    m_subscriptions += m_tensioManager.serialPortManager.isSimulated.observe(
        [&panel = services.savePanel](bool isSimulated) { panel.setSimulated(isSimulated); });
    m_subscriptions += m_tensioManager.isMeasuring.observeChanges(
        [&inhibitor = services.sleepInhibitor](
            bool isMeasuring) { inhibitor.setInhibited(isMeasuring); });
    connect(qApp, &QCoreApplication::aboutToQuit, this,
        [this] { m_delegate.applicationWillTerminate(); });
    // Whether the program ends is decided later, and may not be in time for the port.
    connect(qApp, &QGuiApplication::commitDataRequest, this, &Application::finish);
}

void Application::finish()
{
    m_tensioManager.disconnectAction.apply(Nothing {});
}

} // namespace tensio
