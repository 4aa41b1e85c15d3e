#include "controls/PopUpButton.h"

#include "controls/OrvMenuItemView.h"
#include "toolkit/Colors.h"
#include "toolkit/DesignFrame.h"

#include <QMenu>
#include <QPainter>
#include <QWidgetAction>

#include <algorithm>
#include <utility>

namespace tensio {

PopUpButton::PopUpButton(QWidget* parent)
    : MenuButton(parent)
    , m_menu(new QMenu(this))
{
    setDropDownMenu(*m_menu);
    connect(m_menu, &QMenu::aboutToShow, this, &PopUpButton::fitRows);
}

void PopUpButton::removeAllItems()
{
    m_items.clear();
    m_selected.reset();
    m_menu->clear();
}

void PopUpButton::addItem(Item item)
{
    m_items.push_back(std::move(item));
    if (m_items.size() > 1)
        addRow(m_items.size() - 1);
}

std::optional<PopUpButton::Item> PopUpButton::selectedItem() const
{
    return m_selected ? std::optional(m_items[*m_selected]) : std::nullopt;
}

void PopUpButton::setTitle(QString const& title)
{
    m_items.front().title = title;
    setText(title);
    setNameFromTemplate(*this, title);
    update();
}

void PopUpButton::addRow(std::size_t index)
{
    auto* item = new QWidgetAction(m_menu);
    item->setText(m_items[index].title);
    item->setDefaultWidget(new OrvMenuItemView(*item, *m_menu));
    connect(item, &QAction::triggered, this, [this, index] {
        m_selected = index;
        Q_EMIT itemSelected();
    });
    m_menu->addAction(item);
}

void PopUpButton::fitRows()
{
    m_menu->setFont(font());
    auto const scale = scaleOf(*this);
    // With its border the menu is as wide as the button.
    QSize const row
        = QSize(width() - 2 * std::max(1, qRound(scale)), qRound(28.0 * scale)).expandedTo({0, 0});
    for (auto* action : m_menu->actions())
        static_cast<QWidgetAction*>(action)->defaultWidget()->setFixedSize(row);
}

void PopUpButton::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    double const scale = scaleOf(*this);
    painter.scale(scale, scale);
    painter.setOpacity(isEnabled() ? 1.0 : 0.4);
    QRectF const frame(QPointF(0.0, 0.0), QSizeF(size()) / scale);

    auto cellFont = font();
    cellFont.setPixelSize(14);
    cellFont.setBold(true);
    OrvButtonCell const cell {cellFont, text(), isDown()};
    cell.drawBorderAndBackground(painter, frame);
    cell.drawTitle(painter, frame);
    drawOutline(painter, frame);
}

// The cell draws none, but its white field must stand out on a white card.
void PopUpButton::drawOutline(QPainter& painter, QRectF frame) const
{
    bool const isMarked = isEnabled() && (hasFocus() || underMouse() || isDown());
    double const width = isMarked && (hasFocus() || isDown()) ? 2.0 : 1.0;
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(isMarked ? colors::accent : colors::border, width));
    double const inset = width / 2.0;
    painter.drawRoundedRect(frame.adjusted(inset, inset, -inset, -inset), 6.0, 6.0);
}

} // namespace tensio
