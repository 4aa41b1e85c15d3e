#include "controls/MenuButton.h"

#include <QKeyEvent>
#include <QMenu>

namespace tensio {

void MenuButton::setDropDownMenu(QMenu& menu)
{
    setMenu(&menu);
    auto const announce = [this] {
        QAccessible::State changed;
        changed.expanded = true;
        announceState(*this, changed);
    };
    // Queued: the menu emits both signals before it opens or closes.
    connect(&menu, &QMenu::aboutToShow, this, announce, Qt::QueuedConnection);
    connect(&menu, &QMenu::aboutToHide, this, announce, Qt::QueuedConnection);
}

QString MenuButton::accessibleAction() const
{
    return QAccessibleActionInterface::showMenuAction();
}

void MenuButton::keyPressEvent(QKeyEvent* event)
{
    if (menu() && (event->key() == Qt::Key_Down || event->key() == Qt::Key_Up))
        showMenu();
    else
        QPushButton::keyPressEvent(event);
}

} // namespace tensio
