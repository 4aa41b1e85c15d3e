#pragma once

#include <QRectF>
#include <QSizeF>
#include <QTransform>

class QPainter;
class QString;

namespace tensio {

// Maps design units with y growing upwards onto a surface of the given size.
QTransform upwardTransform(QSizeF designSize, QSizeF surfaceSize);

// Text stays upright in a painter that has y growing upwards; laid out from the top edge of the
// rectangle.
void drawUprightText(QPainter& painter, QRectF rect, int flags, QString const& text);

} // namespace tensio
