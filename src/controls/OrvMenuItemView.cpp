#include "controls/OrvMenuItemView.h"

#include <QAction>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>

namespace tensio {

OrvMenuItemView::OrvMenuItemView(QAction& enclosingMenuItem, QMenu& menu)
    : m_item(enclosingMenuItem)
    , m_menu(menu)
{
    resize(75, 25);
    setAccessibleName(m_item.text());
    connect(&m_menu, &QMenu::hovered, this, qOverload<>(&QWidget::update));
}

void OrvMenuItemView::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    QRectF const row = rect();
    double const scale = row.height() / 25.0;
    bool const isHighlighted = m_menu.activeAction() == &m_item;

    painter.fillRect(row, Qt::white);
    if (isHighlighted)
        painter.fillRect(row.adjusted(3.0 * scale, 0.0, -3.0 * scale, 0.0), Qt::red);
    painter.setPen(isHighlighted ? Qt::white : Qt::red);
    painter.setFont(m_menu.font());
    painter.drawText(row, Qt::AlignCenter, m_item.text());
}

void OrvMenuItemView::enterEvent(QEnterEvent* event)
{
    QWidget::enterEvent(event);
    m_menu.setActiveAction(&m_item);
    update();
}

void OrvMenuItemView::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || !rect().contains(event->pos()))
        return;
    m_menu.close();
    m_item.trigger();
}

} // namespace tensio
