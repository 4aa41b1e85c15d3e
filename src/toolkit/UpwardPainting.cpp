#include "toolkit/UpwardPainting.h"

namespace tensio {

QTransform upwardTransform(QSizeF designSize, QSizeF surfaceSize)
{
    return QTransform::fromScale(1.0, -1.0) * QTransform::fromTranslate(0.0, designSize.height())
        * QTransform::fromScale(
            surfaceSize.width() / designSize.width(), surfaceSize.height() / designSize.height());
}

} // namespace tensio
