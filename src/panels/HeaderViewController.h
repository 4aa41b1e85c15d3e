#pragma once

#include "panels/HeaderViewModel.h"

#include <QObject>

#include <memory>

class QMenu;
class QWidget;

namespace Ui {
class Header;
}

namespace tensio {

// The strip at the top: the subject's name, date and time, and the save buttons.
class HeaderViewController : public QObject {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HeaderViewController)

public:
    // The print button opens the menu.
    HeaderViewController(TensioManager& tensioManager, QMenu& printMenu, QWidget& view);
    ~HeaderViewController() override;

private:
    void viewDidLoad();
    void showCanSave(bool canSave);

    TensioManager& m_tensioManager;
    std::unique_ptr<Ui::Header> m_ui;
    HeaderViewModel m_headerViewModel;
    Subscriptions m_subscriptions;
};

} // namespace tensio
