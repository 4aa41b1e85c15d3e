#include "app/TensioViewController.h"

#include "core/DateText.h"
#include "core/SessionArchive.h"
#include "core/TensioManager.h"
#include "feedback/VisualFeedbackViewController.h"
#include "panels/HeaderViewController.h"
#include "panels/InfoControlsViewController.h"
#include "reactive/assignIfNew.h"
#include "sessions/SessionNotices.h"
#include "toolkit/Accessible.h"
#include "toolkit/DesignFrame.h"
#include "toolkit/StyleSheet.h"
#include "ui_Tensio.h"

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace tensio {

TensioViewController::TensioViewController(TensioManager& tensioManager,
    SessionArchive& sessionArchive, RunLoop& runLoop, Alerts& alerts, QMenu& printMenu,
    QWidget& contentView)
    : m_status(tensioManager)
    , m_contentView(contentView)
    , m_view(std::make_unique<QWidget>(&contentView))
    , m_ui(std::make_unique<Ui::Tensio>())
{
    m_view->setObjectName(u"rootView"_s);
    m_ui->setupUi(m_view.get());
    // Not part of the scaled design: it dims the whole window, its menu bar too.
    m_ui->coverView->setParent(m_contentView.window());
    m_header = std::make_unique<HeaderViewController>(tensioManager, printMenu, *m_ui->headerView);
    m_visualFeedback = std::make_unique<VisualFeedbackViewController>(
        tensioManager, runLoop, *m_ui->visualFeedbackView);
    m_infoControls = std::make_unique<InfoControlsViewController>(
        tensioManager, m_status, runLoop, alerts, *m_ui->infoControlsView);
    m_sessionNotices = std::make_unique<SessionNotices>(
        sessionArchive, *m_ui->unsavedSessionView, *m_ui->storeProblemView);
    QObject::connect(m_sessionNotices.get(), &SessionNotices::willMoveFocus, m_view.get(),
        [this] { m_infoControls->focusStart(); });
    // After the notices: it lies around that of the unsaved session.
    m_history
        = std::make_unique<HistoryViewController>(tensioManager, m_status, *m_ui->historyView);
    m_subscriptions += sessionArchive.shown.observe([this](auto const& session) {
        m_ui->pastSessionLabel->setVisible(session.has_value());
        if (session)
            setLabelText(*m_ui->pastSessionLabel,
                u"以前の測定　"_s + QString::fromStdString(dateAndMinute(session->start)));
    });
    // In the live area, so that every picture of the window has it.
    m_subscriptions += tensioManager.serialPortManager.isSimulated.observe(
        [this](bool isSimulated) { m_ui->simulationLabel->setVisible(isSimulated); });
    m_subscriptions += tensioManager.isShowingPopup.observeChanges([this](bool isShowing) {
        m_ui->coverView->raise();
        m_ui->coverView->setVisible(isShowing);
    });
}

TensioViewController::~TensioViewController() = default;

void TensioViewController::viewWillAppear()
{
    m_ui->coverView->hide();
    m_visualFeedback->viewWillAppear();
}

void TensioViewController::viewWillLayout()
{
    fit(m_contentView.size());
    m_ui->coverView->setGeometry(m_contentView.window()->rect());
}

void TensioViewController::fit(QSizeF size)
{
    auto const scale = std::min(size.width() / width, size.height() / height);
    scaleMenusAndAlerts();
    scaleDesign(*m_view, scale);
    m_view->move(static_cast<int>(std::lround((size.width() - scale * width) / 2.0)),
        static_cast<int>(std::lround((size.height() - scale * height) / 2.0)));
}

// Menus, alerts and Qt's own dialogs follow the window in steps of an eighth, but never become
// smaller than designed; only the menu bar does, so that all its menus fit. By the window's whole
// size, since the height of the menu bar depends on the scale.
void TensioViewController::scaleMenusAndAlerts()
{
    auto& window = *m_contentView.window();
    auto const fitting = std::min(window.width() / width, window.height() / height);
    auto const scale = std::floor(fitting * 8.0) / 8.0;
    if (!assignIfNew(m_menuScale, scale))
        return;
    auto const bar = u"QMenuBar { font-size: %1px; } QMenuBar::item { padding: %2px %3px; }"_s
                         .arg(std::max(1, qRound(14.0 * scale)))
                         .arg(qRound(4.0 * scale))
                         .arg(qRound(10.0 * scale));
    window.setStyleSheet(styleSheet(std::max(scale, 1.0)) + bar);
}

} // namespace tensio
