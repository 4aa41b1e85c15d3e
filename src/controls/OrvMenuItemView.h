#pragma once

#include <QWidget>

class QAction;
class QMenu;

namespace tensio {

// The row of a menu item: its title in red on white, in white on a red bar while the item is
// highlighted. A click performs the item's action once and closes the menu.
class OrvMenuItemView : public QWidget {
    Q_OBJECT

public:
    // Starts 75 × 25.
    OrvMenuItemView(QAction& enclosingMenuItem, QMenu& menu);

protected:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    QAction& m_item;
    QMenu& m_menu;
};

} // namespace tensio
