#pragma once

#include "core/TensioManager.h"

#include <QObject>

#include <memory>

class QWidget;

namespace Ui {
class UserInfo;
}

namespace tensio {

class UserInfoWindow;

// The user information dialog: asks for the subject's name and target, checks both and runs the
// connect command. Closes, and stores what was entered, when the connection has opened. Cancelling
// also ends a connection that is still opening. Shown once: after it has closed it stores nothing.
class UserInfoViewController : public QObject {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(UserInfoViewController)

public:
    static constexpr int maxNameLength = 10;

    // The dialog belongs to the opener's window and takes its scale.
    UserInfoViewController(TensioManager& tensioManager, QWidget const& opener);
    ~UserInfoViewController() override;

    void show();

private:
    void viewDidLoad();
    void connectActions();
    void viewWillAppear() { m_tensioManager.isShowingPopup.setValue(true); }
    void viewDidAppear();
    void viewWillDisappear() { m_tensioManager.isShowingPopup.setValue(false); }
    void incPressureAction() { changePressure(+TensioManager::targetPressureStep); }
    void decPressureAction() { changePressure(-TensioManager::targetPressureStep); }
    void cancelAction();
    void okAction();

    void changePressure(float step);
    // Marks the name as missing, or not.
    void showMissingName(bool isMissing);
    // True when the entry can be used; otherwise the field is corrected, marked and focused.
    bool acceptName();
    bool acceptPressure();
    void connectionOpened();
    void didClose(int result);

    TensioManager& m_tensioManager;
    std::unique_ptr<UserInfoWindow> m_window;
    std::unique_ptr<Ui::UserInfo> m_ui;
    QString m_acceptedName;
    float m_acceptedPressure = 0.0f;
    Subscriptions m_subscriptions;
};

} // namespace tensio
