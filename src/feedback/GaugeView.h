#pragma once

#include "feedback/PressureView.h"

namespace tensio {

// The vertical gauge: a blue bar for the current pressure and scale lines every 5 kPa.
class GaugeView : public PressureView {
    Q_OBJECT

public:
    explicit GaugeView(QWidget* parent = nullptr);

    QAccessible::Role accessibleRole() const override { return QAccessible::ProgressBar; }
    std::optional<Value> accessibleValue() const override;

protected:
    QRegion render() override;
    void drawField(QPainter& painter) const override;

private:
    double m_barHeight = 0.0;
};

} // namespace tensio
