#pragma once

#include <QRectF>
#include <QString>

#include <memory>

class QPainter;
class QSvgRenderer;

namespace tensio {

// A vector picture of the program's resources; a default one draws nothing. Copies share the
// drawing.
class Picture {
public:
    Picture() = default;
    // Throws std::runtime_error when there is no such picture: the program was packed wrongly.
    static Picture named(QString const& name);

    QString const& name() const { return m_name; }
    // In design units.
    QSizeF size() const;
    void draw(QPainter& painter, QRectF target) const;

private:
    QString m_name;
    std::shared_ptr<QSvgRenderer> m_drawing;
};

} // namespace tensio
