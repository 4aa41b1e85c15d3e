#pragma once

#include <QRectF>
#include <QString>

#include <memory>

class QPainter;
class QSvgRenderer;

namespace tensio {

// A picture of the program's resources, crisp at every size. Copies share the drawing.
class Picture {
public:
    // Draws nothing.
    Picture() = default;

    // Throws std::runtime_error when there is no such picture: the program was packed wrongly.
    static Picture named(QString const& name);

    QString const& name() const { return m_name; }
    QSizeF size() const;
    void draw(QPainter& painter, QRectF target) const;

private:
    QString m_name;
    std::shared_ptr<QSvgRenderer> m_drawing;
};

} // namespace tensio
