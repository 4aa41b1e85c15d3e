#pragma once

#include "panels/HistoryViewController.h"
#include "panels/StatusViewModel.h"
#include "reactive/Subscription.h"

#include <QSizeF>

#include <memory>

class QMenu;
class QWidget;

namespace Ui {
class Tensio;
}

namespace tensio {

class Alerts;
class HeaderViewController;
class InfoControlsViewController;
class RunLoop;
class SessionArchive;
class SessionNotices;
class TensioManager;
class VisualFeedbackViewController;

// The root view: holds the panels at their places in the 1040 × 692 design, scales the whole to the
// window and dims the window while the user information dialog is open.
class TensioViewController {
public:
    static constexpr double width = 1040.0;
    static constexpr double height = 692.0;

    // The header's print button opens the print menu. The content view becomes the root view's
    // parent.
    TensioViewController(TensioManager& tensioManager, SessionArchive& sessionArchive,
        RunLoop& runLoop, Alerts& alerts, QMenu& printMenu, QWidget& contentView);
    TensioViewController(TensioViewController const&) = delete;
    TensioViewController& operator=(TensioViewController const&) = delete;
    ~TensioViewController();

    // At every show of the window: takes the cover away and prepares the live area.
    void viewWillAppear();
    // At every layout pass of the window.
    void viewWillLayout();
    // Scales the design uniformly to the size, in the window's units, and centres it.
    void fit(QSizeF size);
    InfoControlsViewController& infoControls() { return *m_infoControls; }
    HistoryViewController& history() { return *m_history; }

private:
    void scaleMenusAndAlerts();

    // Before the panels: it is up to date when one of them opens an alert.
    StatusViewModel m_status;
    QWidget& m_contentView;
    std::unique_ptr<QWidget> m_view;
    std::unique_ptr<Ui::Tensio> m_ui;
    std::unique_ptr<HeaderViewController> m_header;
    std::unique_ptr<VisualFeedbackViewController> m_visualFeedback;
    std::unique_ptr<InfoControlsViewController> m_infoControls;
    std::unique_ptr<HistoryViewController> m_history;
    std::unique_ptr<SessionNotices> m_sessionNotices;
    // Of menus, alerts and Qt's own dialogs.
    double m_menuScale = 1.0;
    Subscriptions m_subscriptions;
};

} // namespace tensio
