#include "feedback/Plotter.h"

#include <QPainter>

#include <algorithm>
#include <cassert>
#include <cmath>
#include <utility>

namespace tensio {

namespace {

// Puts the zero line just above the border of the graph.
constexpr double baseline = 2.0;

// Farther up than any scale shows; keeps the painter's fixed-point coordinates from overflowing.
constexpr double farAway = 10000.0;

} // namespace

Plotter::Plotter(
    std::vector<QColor> colors, double canvasWidth, double canvasHeight, float interval)
    : m_colors(std::move(colors))
    , m_canvasWidth(canvasWidth)
    , m_canvasHeight(canvasHeight)
    , m_interval(interval)
{
    assert(!m_colors.empty());
    newPath();
}

void Plotter::addPressurePoint(float pressure)
{
    if (!m_dx || !m_dy)
        return;
    m_pressurePoints.push_back(pressure);
    ++m_paths.back().count;
    if (pressurePointIndex() == MAX_POINTS_PER_SCREEN || pressurePointIndex() == m_pointsPerScreen)
        newPath();
}

void Plotter::setUpperBoundPressure(float upperBound)
{
    m_dy = m_canvasHeight / static_cast<double>(upperBound);
}

void Plotter::setTimeWindow(std::int64_t seconds)
{
    m_pointsPerScreen = static_cast<std::int64_t>(static_cast<float>(seconds) / m_interval);
    m_dx = m_canvasWidth / static_cast<double>(m_pointsPerScreen);
}

void Plotter::reset()
{
    m_pressurePoints.clear();
    m_paths.clear();
    newPath();
    ++m_resets;
}

QPointF Plotter::point(Path path, std::size_t index) const
{
    auto const pressure = static_cast<double>(m_pressurePoints[path.first + index]);
    // The painter would never finish a line to nowhere.
    auto const y = std::isnan(pressure) ? baseline : pressure * *m_dy + baseline;
    return {*m_dx * static_cast<double>(index), std::clamp(y, -farAway, farAway)};
}

QTransform Plotter::toUnits() const
{
    return {*m_dx, 0.0, 0.0, *m_dy, 0.0, baseline};
}

QRectF Plotter::addedInk(std::size_t sweep, std::size_t first, std::size_t end) const
{
    // The point before gets a join where it had a cap.
    auto const points = polyline(m_paths[sweep], std::max<std::size_t>(first, 1) - 1, end);
    return points.boundingRect().adjusted(-reach, -reach, reach, reach);
}

void Plotter::draw(QPainter& painter, std::size_t sweep, std::size_t end, QRectF const& area) const
{
    // A cut leaves a bare cap where a join was. It must lie outside the area.
    auto const first = std::max(std::floor((area.left() - reach) / *m_dx), 0.0);
    auto const last = std::max(std::ceil((area.right() + reach) / *m_dx), 0.0);
    auto const points = polyline(m_paths[sweep], static_cast<std::size_t>(first),
        std::min(static_cast<std::size_t>(last) + 1, end));
    painter.setPen(QPen(
        m_colors[sweep % m_colors.size()], lineWidth, Qt::SolidLine, Qt::FlatCap, Qt::BevelJoin));
    painter.drawPolyline(points);
}

QPolygonF Plotter::polyline(Path path, std::size_t begin, std::size_t end) const
{
    QPolygonF points;
    points.reserve(static_cast<qsizetype>(end - begin) + 1);
    if (begin == 0)
        points << QPointF(0.0, 0.0);
    for (auto index = begin; index < end; ++index)
        points << point(path, index);
    return points;
}

} // namespace tensio
