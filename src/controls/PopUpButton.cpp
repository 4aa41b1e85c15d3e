#include "controls/PopUpButton.h"

#include "controls/OrvButtonCell.h"
#include "controls/OrvMenuItemView.h"
#include "toolkit/Colors.h"
#include "toolkit/DesignFrame.h"

#include <QMenu>
#include <QPainter>
#include <QWidgetAction>

#include <algorithm>

namespace tensio {

PopUpButton::PopUpButton(QWidget* parent)
    : MenuButton(parent)
{
    auto& menu = *new QMenu(this);
    setDropDownMenu(menu);
    connect(&menu, &QMenu::aboutToShow, this, &PopUpButton::fitRows);
}

void PopUpButton::addItem(QString const& title, int tag)
{
    auto* item = new QWidgetAction(menu());
    item->setText(title);
    item->setDefaultWidget(new OrvMenuItemView(*item, *menu()));
    connect(item, &QAction::triggered, this, [this, tag] { Q_EMIT itemSelected(tag); });
    menu()->addAction(item);
}

void PopUpButton::setTitle(QString const& title)
{
    setText(title);
    setNameFromTemplate(*this, title);
}

void PopUpButton::fitRows()
{
    menu()->setFont(font());
    auto const scale = scaleOf(*this);
    // With its border the menu is as wide as the button.
    QSize const row
        = QSize(width() - 2 * std::max(1, qRound(scale)), qRound(28.0 * scale)).expandedTo({0, 0});
    for (auto* action : menu()->actions())
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
