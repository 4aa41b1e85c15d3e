#include "feedback/GaugeView.h"

#include "toolkit/Color.h"
#include "toolkit/DesignFrame.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

namespace tensio {

namespace {
constexpr double border = 2.0;
}

std::optional<Accessible::Value> GaugeView::accessibleValue() const
{
    auto const upperBound = static_cast<double>(upperBoundPressure.value());
    return Value {static_cast<double>(currentPressure.value()), 0.0, upperBound};
}

void GaugeView::paintEvent(QPaintEvent* /*event*/)
{
    auto const designSize = designFrame(*this).size();
    auto const upward = designToSurface(designSize, size());
    auto const inner = wholePixels(upward.mapRect(QRectF(
        border, border, designSize.width() - 2.0 * border, designSize.height() - 2.0 * border)));

    QPainter painter(this);
    painter.fillRect(rect(), Qt::black);
    painter.fillRect(inner, colorFromHexString(QStringLiteral("#434343")));
    painter.setClipRect(inner);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setTransform(upward, true);
    drawBar(painter);
    drawScale(painter);
    drawLine(painter, targetPressure.value(), targetColor.value());
    drawLine(painter, maxPressure.value(), colorFromHexString(QStringLiteral("#4dd736")));
}

void GaugeView::drawBar(QPainter& painter) const
{
    auto const size = designFrame(*this).size();
    QRectF const bar(0.0, border, size.width(),
        (size.height() - 2.0 * border) * fractionOf(currentPressure.value()));
    painter.fillRect(bar, colorFromHexString(QStringLiteral("#009cff")));
}

void GaugeView::drawScale(QPainter& painter) const
{
    auto const size = designFrame(*this).size();
    QPainterPath scale;
    for (float pressure = 0.0f; pressure <= upperBoundPressure.value(); pressure += 5.0f) {
        auto const y = std::round(fractionOf(pressure) * size.height());
        scale.moveTo(0.0, y);
        scale.lineTo(size.width(), y);
    }
    painter.strokePath(scale, QPen(Qt::black, 1.0, Qt::SolidLine, Qt::FlatCap));
}

void GaugeView::drawLine(QPainter& painter, float pressure, QColor const& color) const
{
    auto const size = designFrame(*this).size();
    auto const y = std::round(fractionOf(pressure) * size.height());
    // Skip lines on the border: at fractional scales the clip would leave a sliver.
    if (y <= 0.0 || y >= size.height())
        return;
    painter.setPen(QPen(color, 4.0, Qt::SolidLine, Qt::FlatCap));
    painter.drawLine(QPointF(0.0, y), QPointF(size.width(), y));
}

double GaugeView::fractionOf(float pressure) const
{
    auto const fraction
        = static_cast<double>(pressure) / static_cast<double>(upperBoundPressure.value());
    // No scale yet, or a reading beyond all bounds: stay on a paper the painter can handle.
    return std::isnan(fraction) ? 0.0 : std::clamp(fraction, -1.0, 4.0);
}

} // namespace tensio
