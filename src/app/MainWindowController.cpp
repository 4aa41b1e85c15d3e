#include "app/MainWindowController.h"

#include "core/DateText.h"
#include "core/SessionArchive.h"
#include "core/TensioManager.h"
#include "reactive/combineLatest.h"
#include "toolkit/OnEvent.h"
#include "toolkit/WindowSize.h"

#include <QMenuBar>
#include <QScreen>

using namespace Qt::StringLiterals;

namespace tensio {

namespace {

QString title(bool isSimulated, std::optional<SessionSummary> const& pastSession)
{
    auto title = u"tensio"_s;
    // Simulated readings must never pass for a subject's.
    if (isSimulated)
        title += u" — 模擬装置（実際の測定ではありません）"_s;
    if (pastSession)
        title += u" — 以前の測定：%1　%2"_s.arg(QString::fromStdString(pastSession->name),
            QString::fromStdString(dateAndMinute(pastSession->start)));
    return title;
}

} // namespace

MainWindowController::MainWindowController(
    TensioManager& tensioManager, SessionArchive& sessionArchive, RunLoop& runLoop, Alerts& alerts)
    : m_contentController(
        tensioManager, sessionArchive, runLoop, alerts, m_printMenu, m_window.contentView())
{
    windowDidLoad();
    m_title = combineLatest(tensioManager.serialPortManager.isSimulated, sessionArchive.shown,
        [this](bool isSimulated, auto const& pastSession) {
            m_window.setWindowTitle(title(isSimulated, pastSession));
        });
}

void MainWindowController::windowDidLoad()
{
    onEvent(m_window.contentView(), {QEvent::Resize}, *this,
        [this](QObject&) { m_contentController.viewWillLayout(); });
    connect(
        &m_window, &MainWindow::willAppear, this, [this] { m_contentController.viewWillAppear(); });
    m_contentController.fit({TensioViewController::width, TensioViewController::height});
}

void MainWindowController::fitToDesign()
{
    auto const* menuBar = m_window.menuBar();
    int const menuHeight = menuBar->isNativeMenuBar() ? 0 : menuBar->sizeHint().height();
    QSize const design(static_cast<int>(TensioViewController::width),
        static_cast<int>(TensioViewController::height));
    auto const available = m_window.screen()->availableGeometry();
    auto const size = openingSize(design, available.size(), menuHeight);
    m_window.setMinimumSize((design / 2 + QSize(0, menuHeight)).boundedTo(size));
    m_window.resize(size);
    QRect frame({}, size.grownBy(assumedFrame));
    frame.moveCenter(available.center());
    m_window.move(frame.topLeft());
}

} // namespace tensio
