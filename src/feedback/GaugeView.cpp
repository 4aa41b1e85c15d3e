#include "feedback/GaugeView.h"

#include "toolkit/Color.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <utility>

namespace tensio {

GaugeView::GaugeView(QWidget* parent)
    : PressureView(0.0f, 0.0f, colorFromHexString(QStringLiteral("#434343")), parent)
{
}

std::optional<Accessible::Value> GaugeView::accessibleValue() const
{
    auto const upperBound = static_cast<double>(upperBoundPressure.value());
    return Value {static_cast<double>(currentPressure.value()), 0.0, upperBound};
}

QRegion GaugeView::render()
{
    auto changed = changedField();
    auto const before = std::exchange(m_barHeight, barHeight());
    if (before != m_barHeight)
        changed |= rowsBetween(border + before, border + m_barHeight);
    renderField(changed);
    return changed;
}

void GaugeView::drawField(QPainter& painter) const
{
    auto const width = designSize().width();
    QRectF const bar(0.0, border, width, m_barHeight);
    painter.fillRect(bar, colorFromHexString(QStringLiteral("#009cff")));
    drawScale(painter, 0.0, width, QPen(Qt::black, 1.0));
}

double GaugeView::barHeight() const
{
    auto const innerHeight = designSize().height() - 2.0 * border;
    auto const height = static_cast<double>(currentPressure.value())
        / static_cast<double>(upperBoundPressure.value()) * innerHeight;
    // A reading may be anything, infinity included; far above the top is far enough.
    return std::isnan(height) ? 0.0 : std::clamp(height, -innerHeight, 2.0 * innerHeight);
}

} // namespace tensio
