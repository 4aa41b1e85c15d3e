#include "toolkit/UpwardPainting.h"

#include <QPainter>

namespace tensio {

QTransform upwardTransform(QSizeF designSize, QSizeF surfaceSize)
{
    return QTransform::fromScale(1.0, -1.0) * QTransform::fromTranslate(0.0, designSize.height())
        * QTransform::fromScale(
            surfaceSize.width() / designSize.width(), surfaceSize.height() / designSize.height());
}

void drawUprightText(QPainter& painter, QRectF rect, int flags, QString const& text)
{
    painter.save();
    painter.translate(rect.left(), rect.bottom());
    painter.scale(1.0, -1.0);
    painter.drawText(QRectF(QPointF(0.0, 0.0), rect.size()), flags, text);
    painter.restore();
}

} // namespace tensio
