#pragma once

#include "panels/HeaderViewModel.h"

#include <memory>

class QWidget;

namespace Ui {
class Header;
}

namespace tensio {

// The strip at the top: the subject's name, the date and the time.
class HeaderViewController {
public:
    // The view is not owned; it must outlive the controller.
    HeaderViewController(TensioManager& tensioManager, QWidget& view);
    HeaderViewController(HeaderViewController const&) = delete;
    HeaderViewController& operator=(HeaderViewController const&) = delete;
    ~HeaderViewController();

private:
    void showDate(Date date);

    std::unique_ptr<Ui::Header> m_ui;
    HeaderViewModel m_headerViewModel;
    Subscriptions m_subscriptions;
};

} // namespace tensio
