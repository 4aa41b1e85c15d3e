#pragma once

#include "controls/MenuButton.h"
#include "controls/OrvButtonCell.h"

#include <optional>
#include <vector>

namespace tensio {

// A pull-down button drawn by OrvButtonCell: its first item is only the button's title and is not
// offered; the menu offers the others, as OrvMenuItemView rows.
class PopUpButton : public MenuButton {
    Q_OBJECT

public:
    struct Item {
        QString title;
        int tag = 0;
    };

    explicit PopUpButton(QWidget* parent = nullptr);

    void removeAllItems();
    void addItem(Item item);
    std::optional<Item> selectedItem() const;
    // Renames the first item, which the button shows.
    void setTitle(QString const& title);

    QAccessible::Role accessibleRole() const override { return QAccessible::ComboBox; }

Q_SIGNALS:
    void itemSelected();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void addRow(std::size_t index);
    void fitRows();
    void drawOutline(QPainter& painter, QRectF frame) const;

    std::vector<Item> m_items;
    std::optional<std::size_t> m_selected;
    QMenu* m_menu;
};

} // namespace tensio
