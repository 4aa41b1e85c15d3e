#pragma once

#include "reactive/MutableProperty.h"
#include "toolkit/Accessible.h"

#include <QColor>
#include <QWidget>

namespace tensio {

// The vertical gauge: a blue bar for the current pressure, scale lines every 5 kPa, lines at target
// and maximum. It has no observers: its owner binds the values and asks for the redraw.
class GaugeView
    : public QWidget
    , public Accessible {
    Q_OBJECT

public:
    using QWidget::QWidget;

    MutableProperty<float> upperBoundPressure {0.0f};
    MutableProperty<float> maxPressure {0.0f};
    MutableProperty<float> targetPressure {0.0f};
    MutableProperty<float> currentPressure {0.0f};
    MutableProperty<QColor> targetColor {QColor()};

    QAccessible::Role accessibleRole() const override { return QAccessible::ProgressBar; }
    std::optional<Value> accessibleValue() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void drawBar(QPainter& painter) const;
    void drawScale(QPainter& painter) const;
    void drawLine(QPainter& painter, float pressure, QColor const& color) const;
    double fractionOf(float pressure) const;
};

} // namespace tensio
