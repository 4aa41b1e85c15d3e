#pragma once

#include <QFont>
#include <QRectF>
#include <QString>

#include <optional>

class QPainter;

namespace tensio {

// Draws a pop-up button: a white rounded field with a red arrow and a red centred title. Frames are
// in design units, y downwards; holds no state of the application.
class OrvButtonCell {
public:
    std::optional<QFont> font;
    QString title;
    bool isHighlighted = false;

    void drawBorderAndBackground(QPainter& painter, QRectF frame) const;
    void drawTitle(QPainter& painter, QRectF frame) const;
};

} // namespace tensio
