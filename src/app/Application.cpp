#include "app/Application.h"

#include "app/PastSessionsWindow.h"
#include "core/DateText.h"
#include "toolkit/Accessible.h"
#include "toolkit/StyleSheet.h"
#include "toolkit/WaylandWindowSizes.h"

#include <QApplication>
#include <QFont>
#include <QIcon>
#include <QLibraryInfo>
#include <QLocale>
#include <QPalette>
#include <QStyleFactory>
#include <QTranslator>

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
    m_windowController.setPrintMenu(m_mainMenu.printMenu());
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

void Application::print(ReportKind kind)
{
    // Recreated each time so that it sees the current printers.
    m_printPreview = std::make_unique<PrintPreviewController>(
        m_tensioManager, m_printPanels, m_alerts, m_pageLayout, window());
    // Queued: the preview still runs when it reports that it has closed.
    connect(
        m_printPreview.get(), &PrintPreviewController::closed, m_printPreview.get(),
        [this] { m_printPreview.reset(); }, Qt::QueuedConnection);
    m_printPreview->show(kind);
}

void prepareLook()
{
    installAccessibility();
    QApplication::setApplicationName(QStringLiteral("tensio"));
    QApplication::setApplicationVersion(QStringLiteral(TENSIO_VERSION));
    QApplication::setOrganizationName(QStringLiteral("tensio"));
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/tensio.svg")));
    QLocale::setDefault(QLocale(QLocale::Japanese, QLocale::Japan));
    auto* translator = new QTranslator(qApp);
    if (translator->load(
            QStringLiteral("qtbase_ja"), QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QApplication::installTranslator(translator);

    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QFont font(QStringLiteral("Noto Sans CJK JP"));
    font.setPixelSize(14);
    QApplication::setFont(font);
    if (QGuiApplication::platformName().startsWith(QStringLiteral("wayland")))
        new WaylandWindowSizes(*qApp);
    // A style sheet would make the placeholder too pale to read.
    QPalette fields;
    fields.setColor(QPalette::Text, QColor(0x1f, 0x29, 0x37));
    fields.setColor(QPalette::PlaceholderText, QColor(0x4b, 0x55, 0x63));
    QApplication::setPalette(fields, "QLineEdit");
    // Alerts and system panels; the windows of the design carry their own, scaled.
    qApp->setStyleSheet(styleSheet(1.0));
}

} // namespace tensio
