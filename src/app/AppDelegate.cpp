#include "app/AppDelegate.h"

#include <QGuiApplication>
#include <QMenu>

using namespace Qt::StringLiterals;

namespace tensio {

namespace {
constexpr Seconds menuCloseDelay {0.2};
}

AppDelegate::AppDelegate(
    PrintingServices const& printing, RunLoop& runLoop, QMenu& defaultTargetMenu, QWidget& window)
    : m_printing(printing)
    , m_runLoop(runLoop)
    , m_statusMenu(defaultTargetMenu)
    , m_defaultTargetMenu(defaultTargetMenu)
    , m_statusItem(QIcon(u":/tensio.svg"_s))
    , m_window(window)
{
    m_statusItem.setToolTip(u"tensio — 目標圧の初期値"_s);
}

void AppDelegate::applicationDidFinishLaunching()
{
    m_statusItem.setContextMenu(&m_statusMenu);
    m_tensioManager.setUpTargetPressureMenu(m_defaultTargetMenu);
    // Under X a status bar may come later. Elsewhere it cannot, and Qt complains when it is
    // missing.
    bool const mayComeLater = QGuiApplication::platformName() == u"xcb"_s;
    m_statusItem.setVisible(mayComeLater || QSystemTrayIcon::isSystemTrayAvailable());
}

void AppDelegate::saveScreenshotAction()
{
    m_screenshot = m_runLoop.scheduleAfter(menuCloseDelay, [this] {
        if (validateMenuItem(&AppDelegate::saveScreenshotAction))
            m_tensioManager.saveScreenshot();
    });
}

bool AppDelegate::validateMenuItem(Command command) const
{
    bool const needsSelection = command == &AppDelegate::saveSelectedAction
        || command == &AppDelegate::printSelectedAction;
    auto const kind = needsSelection ? ReportKind::Selected : ReportKind::List;
    return hasReport(kind, m_tensioManager);
}

void AppDelegate::saveAsPdf(ReportKind kind)
{
    m_tensioManager.saveViewAsPdf(*makeReport(kind, m_tensioManager));
}

void AppDelegate::print(ReportKind kind)
{
    (new PrintPreview(m_printing, m_window))->showReport(kind);
}

} // namespace tensio
