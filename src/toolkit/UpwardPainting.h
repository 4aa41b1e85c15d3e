#pragma once

#include <QSizeF>
#include <QTransform>

namespace tensio {

// Maps design units with y growing upwards onto a surface of the given size.
QTransform upwardTransform(QSizeF designSize, QSizeF surfaceSize);

} // namespace tensio
