#include "feedback/PressureView.h"

#include "feedback/PartOfImage.h"
#include "reactive/assignIfNew.h"
#include "toolkit/Colors.h"
#include "toolkit/DesignFrame.h"

#include <QPaintEvent>
#include <QPainter>
#include <QPainterPath>
#include <QPen>

#include <algorithm>
#include <cmath>
#include <utility>

using namespace Qt::StringLiterals;

namespace tensio {

namespace {
constexpr double lineWidth = 4.0;
constexpr double outOfSight = 1000.0; // Times the scale.
} // namespace

PressureView::PressureView(float upperBound, float maximum, QColor field, QWidget* parent)
    : QWidget(parent)
    , upperBoundPressure(upperBound)
    , maxPressure(maximum)
    , m_fieldColor(field)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void PressureView::renderFrame()
{
    auto const ratio = devicePixelRatioF();
    // One unit larger, as by updateAround.
    for (auto const& area : render()) {
        QRectF const logical(QPointF(area.topLeft()) / ratio, QSizeF(area.size()) / ratio);
        update(logical.toAlignedRect().adjusted(-1, -1, 1, 1));
    }
}

void PressureView::paintEvent(QPaintEvent* event)
{
    if (m_field.size() != surfaceSize())
        render();
    QPainter painter(this);
    auto const ratio = devicePixelRatioF();
    // At a fractional ratio the picture may end a pixel short of the view.
    if (ratio != std::round(ratio))
        painter.fillRect(event->rect(), Qt::black);
    painter.scale(1.0 / ratio, 1.0 / ratio);
    for (auto const& rect : event->region()) {
        QRectF const device(QPointF(rect.topLeft()) * ratio, QSizeF(rect.size()) * ratio);
        auto const area = device.toAlignedRect() & m_field.rect();
        painter.drawImage(area, m_field, area);
        if (auto const inner = area & m_insideBorder; !inner.isEmpty())
            painter.drawImage(inner, overlay(), inner);
    }
}

QRegion PressureView::changedField()
{
    static auto const maximumColor = colorFromHexString(u"#4dd736"_s);
    bool const isSizeNew = m_field.size() != surfaceSize();
    if (isSizeNew)
        adoptSize();
    bool const isScaleNew = assignIfNew(m_upperBound, upperBoundPressure.value());
    auto const changed = replaceLine(m_target, targetPressure.value(), targetColor.value())
        | replaceLine(m_maximum, maxPressure.value(), maximumColor);
    return isSizeNew || isScaleNew ? QRegion(m_field.rect()) : changed;
}

void PressureView::adoptSize()
{
    m_field = QImage(surfaceSize(), QImage::Format_RGB32);
    m_designSize = designFrame(*this).size();
    m_toDevice = designToSurface(m_designSize, m_field.size());
    QRectF const frame(QPointF(0.0, 0.0), m_designSize);
    m_insideBorder
        = wholePixels(m_toDevice.mapRect(frame.adjusted(border, border, -border, -border)));
}

QRegion PressureView::replaceLine(Line& line, float pressure, QColor const& color)
{
    auto const before = std::exchange(line, {lineHeight(pressure), color});
    return before == line ? QRegion() : QRegion(rowsOf(before)) | rowsOf(line);
}

void PressureView::renderField(QRegion const& area)
{
    for (auto const& rect : area) {
        auto part = partOf(m_field, rect);
        QPainter painter(&part);
        painter.translate(-rect.topLeft());
        painter.fillRect(rect, Qt::black);
        painter.setClipRect(m_insideBorder);
        painter.fillRect(rect, m_fieldColor);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setTransform(m_toDevice, true);
        drawField(painter);
        drawLine(painter, m_target);
        drawLine(painter, m_maximum);
    }
}

void PressureView::drawScale(QPainter& painter, double left, double right, QPen pen) const
{
    QPainterPath lines;
    for (float pressure = 0.0f; pressure <= upperBoundPressure.value(); pressure += 5.0f) {
        lines.moveTo(left, heightOf(pressure));
        lines.lineTo(right, heightOf(pressure));
    }
    pen.setCapStyle(Qt::FlatCap);
    painter.strokePath(lines, pen);
}

double PressureView::shareOfScale(float pressure) const
{
    auto const share
        = static_cast<double>(pressure) / static_cast<double>(upperBoundPressure.value());
    return std::isnan(share) ? 0.0 : std::clamp(share, -outOfSight, outOfSight);
}

double PressureView::heightOf(float pressure) const
{
    return std::round(shareOfScale(pressure) * m_designSize.height());
}

// A line on the border is hidden, but at fractional scales the clip would leave a sliver of it.
std::optional<double> PressureView::lineHeight(float pressure) const
{
    auto const height = heightOf(pressure);
    bool const isVisible = height > 0.0 && height < m_designSize.height();
    return isVisible ? std::optional(height) : std::nullopt;
}

QRect PressureView::rowsBetween(double from, double to) const
{
    auto const [bottom, top] = std::minmax(from, to);
    auto const rows = m_toDevice.mapRect(QRectF(0.0, bottom, m_designSize.width(), top - bottom));
    return rows.toAlignedRect().adjusted(0, -1, 0, 1) & m_field.rect();
}

QRect PressureView::rowsOf(Line const& line) const
{
    if (!line.height)
        return {};
    return rowsBetween(*line.height - lineWidth / 2.0, *line.height + lineWidth / 2.0);
}

void PressureView::drawLine(QPainter& painter, Line const& line) const
{
    if (!line.height)
        return;
    painter.setPen(QPen(line.color, lineWidth, Qt::SolidLine, Qt::FlatCap));
    painter.drawLine(QPointF(0.0, *line.height), QPointF(m_designSize.width(), *line.height));
}

} // namespace tensio
