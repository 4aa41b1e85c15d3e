#pragma once

#include "reactive/MutableProperty.h"
#include "toolkit/Accessible.h"

#include <QColor>
#include <QImage>
#include <QRegion>
#include <QTransform>
#include <QWidget>

#include <optional>

namespace tensio {

// What gauge and graph share: a field with a black border and the lines of target and maximum.
// Rendering is apart from painting: renderFrame() renders what has changed, painting only copies.
// It has no observers: its owner binds the values and asks for frames.
//
// Pressures in kPa. Drawing is in design units with y upwards, areas are in device pixels.
class PressureView
    : public QWidget
    , public Accessible {
    Q_OBJECT

public:
    // 0: no scale yet.
    MutableProperty<float> upperBoundPressure;
    MutableProperty<float> maxPressure;
    MutableProperty<float> targetPressure {0.0f};
    MutableProperty<float> currentPressure {0.0f};
    MutableProperty<QColor> targetColor {QColor()};

    // Renders what is new and asks for a repaint of just those pixels.
    void renderFrame();
    // Above the bottom, known once a frame is rendered; none where the border hides the line.
    std::optional<double> lineHeight(float pressure) const;

protected:
    static constexpr double border = 2.0;

    PressureView(float upperBound, float maximum, QColor field, QWidget* parent);

    // Renders what is new; returns where.
    virtual QRegion render() = 0;
    // Draws what lies on the field, below the lines.
    virtual void drawField(QPainter& painter) const = 0;
    // What lies over field and lines, inside the border: a picture as large as the field's, or
    // none.
    virtual QImage overlay() const { return {}; }
    void paintEvent(QPaintEvent* event) override;

    // Where the field differs from what was rendered last.
    QRegion changedField();
    // Draws a line every 5 kPa.
    void drawScale(QPainter& painter, double left, double right, QPen pen) const;
    void renderField(QRegion const& area);

    QSize pictureSize() const { return m_field.size(); }
    // As of the latest changedField().
    QSizeF designSize() const { return m_designSize; }
    QTransform const& toDevice() const { return m_toDevice; }
    // 0 at the bottom, 1 at the top; infinite pressures are clamped out of sight, NaN counts as 0.
    double shareOfScale(float pressure) const;
    // Rounded to whole units, as lines are drawn.
    double heightOf(float pressure) const;
    // The rows from one height to another, with their soft edges.
    QRect rowsBetween(double from, double to) const;

private:
    struct Line {
        std::optional<double> height;
        QColor color;

        bool operator==(Line const&) const = default;
    };
    QSize surfaceSize() const { return size() * devicePixelRatioF(); }
    void adoptSize();
    QRegion replaceLine(Line& line, float pressure, QColor const& color);
    QRect rowsOf(Line const& line) const;
    void drawLine(QPainter& painter, Line const& line) const;

    QColor m_fieldColor;
    QImage m_field;
    float m_upperBound = 0.0f;
    QSizeF m_designSize;
    QTransform m_toDevice;
    QRect m_insideBorder;
    Line m_target;
    Line m_maximum;
};

} // namespace tensio
