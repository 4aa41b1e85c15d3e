#pragma once

#include <QImage>

namespace tensio {

// A picture of these pixels alone: with a clip Qt would still rasterize whole strokes. The image
// must outlive it.
inline QImage partOf(QImage& image, QRect area)
{
    return {image.scanLine(area.top()) + area.left() * image.depth() / 8, area.width(),
        area.height(), image.bytesPerLine(), image.format()};
}

} // namespace tensio
