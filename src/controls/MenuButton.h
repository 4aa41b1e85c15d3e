#pragma once

#include "toolkit/Accessible.h"

#include <QPushButton>

namespace tensio {

// A button that opens a menu, also with the up and down arrow keys, and reports to screen readers
// whether it is open.
class MenuButton
    : public QPushButton
    , public Accessible {
    Q_OBJECT

public:
    using QPushButton::QPushButton;

    void setDropDownMenu(QMenu& menu);

    QAccessible::Role accessibleRole() const override { return QAccessible::ButtonMenu; }
    QString accessibleAction() const override;
    void performAccessibleAction() override { showMenu(); }
    QMenu* accessibleMenu() const override { return menu(); }

protected:
    void keyPressEvent(QKeyEvent* event) override;
};

} // namespace tensio
