#pragma once

#include "panels/InfoControlsViewModel.h"
#include "panels/StatusViewModel.h"
#include "platform/Alerts.h"
#include "platform/Error.h"
#include "reactive/Signal.h"

#include <QObject>

#include <memory>

class QMenu;
class QWidget;

namespace Ui {
class InfoControls;
}

namespace tensio {

class UserInfoViewController;

// The control panel: target, read-outs, lamp, Start and Finish, percentage. Opens the user
// information dialog and shows alerts for failed and lost connections.
class InfoControlsViewController : public QObject {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(InfoControlsViewController)

public:
    InfoControlsViewController(TensioManager& tensioManager, StatusViewModel const& status,
        RunLoop& runLoop, Alerts& alerts, QWidget& view);
    ~InfoControlsViewController() override;

    // Start and Finish with their keys.
    void addCommands(QMenu& menu);
    void focusStart();

private:
    void viewDidLoad();
    void showReadOuts();
    void showMeasuringState(bool isMeasuring);
    void fillPercentPopup();
    void percentSelected(int percentage);
    void start();
    void openUserInfo();
    void connectionEvent(Event<Nothing, ErrorRef> const& event);

    TensioManager& m_tensioManager;
    StatusViewModel const& m_status;
    Alerts& m_alerts;
    QWidget& m_view;
    std::unique_ptr<Ui::InfoControls> m_ui;
    InfoControlsViewModel m_viewModel;
    CocoaAction m_cocoaActionStart;
    // Of the dialog opened last.
    std::unique_ptr<UserInfoViewController> m_userInfo;
    Subscriptions m_subscriptions;
};

} // namespace tensio
