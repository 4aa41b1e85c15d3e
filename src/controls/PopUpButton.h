#pragma once

#include "controls/MenuButton.h"

namespace tensio {

// A pull-down button drawn by OrvButtonCell: its menu offers the items as OrvMenuItemView rows, its
// title is not one of them.
class PopUpButton : public MenuButton {
    Q_OBJECT

public:
    explicit PopUpButton(QWidget* parent = nullptr);

    void addItem(QString const& title, int tag);
    void setTitle(QString const& title);

    QAccessible::Role accessibleRole() const override { return QAccessible::ComboBox; }

Q_SIGNALS:
    void itemSelected(int tag);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void fitRows();
    void drawOutline(QPainter& painter, QRectF frame) const;
};

} // namespace tensio
