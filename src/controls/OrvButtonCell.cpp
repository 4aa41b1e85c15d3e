#include "controls/OrvButtonCell.h"

#include <QPainter>
#include <QPolygonF>

namespace tensio {

void OrvButtonCell::drawBorderAndBackground(QPainter& painter, QRectF frame) const
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::white);
    auto const field = frame.adjusted(0.5, 0.5, -0.5, -0.5);
    painter.drawRoundedRect(field, 6.0, 6.0);

    QPointF const anchor(frame.right() - 3.0, frame.top() + 7.0);
    QPolygonF const resting {anchor, anchor + QPointF(-5.0, 10.0), anchor + QPointF(-10.0, 0.0)};
    QPolygonF const highlighted {
        anchor + QPointF(-5.0, 0.0), anchor + QPointF(0.0, 10.0), anchor + QPointF(-10.0, 10.0)};
    painter.setBrush(Qt::red);
    painter.drawPolygon(isHighlighted ? highlighted : resting);
}

void OrvButtonCell::drawTitle(QPainter& painter, QRectF frame) const
{
    if (!font || title.isEmpty())
        return;
    painter.setFont(*font);
    painter.setPen(Qt::red);
    // From the top, as the arrow.
    painter.drawText(frame.translated(0.0, 1.0), Qt::AlignHCenter | Qt::AlignTop, title);
}

} // namespace tensio
