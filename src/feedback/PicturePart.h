#pragma once

#include <QImage>

namespace tensio {

// The pixels of the area as a picture of their own. Stroking on it costs only what it shows; under
// a clip, Qt would rasterize all rows and columns of the stroke.
inline QImage partOf(QImage& picture, QRect area)
{
    return {picture.scanLine(area.top()) + area.left() * picture.depth() / 8, area.width(),
        area.height(), picture.bytesPerLine(), picture.format()};
}

} // namespace tensio
