#include "feedback/GaugeView.h"

#include "toolkit/Colors.h"

#include <QPainter>

#include <utility>

using namespace Qt::StringLiterals;

namespace tensio {

GaugeView::GaugeView(QWidget* parent)
    : PressureView(0.0f, 0.0f, colorFromHexString(u"#434343"_s), parent)
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
    auto const innerHeight = designSize().height() - 2.0 * border;
    auto const before
        = std::exchange(m_barHeight, shareOfScale(currentPressure.value()) * innerHeight);
    if (before != m_barHeight)
        changed |= rowsBetween(border + before, border + m_barHeight);
    renderField(changed);
    return changed;
}

void GaugeView::drawField(QPainter& painter) const
{
    static auto const barColor = colorFromHexString(u"#009cff"_s);
    auto const width = designSize().width();
    painter.fillRect(QRectF(0.0, border, width, m_barHeight), barColor);
    drawScale(painter, 0.0, width, QPen(Qt::black, 1.0));
}

} // namespace tensio
