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

void Plotter::newPath()
{
    m_paths.push_back({m_pressurePoints.size(), 0});
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
    return {*m_dx * static_cast<double>(index), pressure * *m_dy + baseline};
}

QTransform Plotter::toUnits() const
{
    return {*m_dx, 0.0, 0.0, *m_dy, 0.0, baseline};
}

double Plotter::rightEnd(Path path) const
{
    return path.count == 0 ? 0.0 : *m_dx * static_cast<double>(path.count - 1);
}

void Plotter::draw(QPainter& painter, std::size_t pathIndex, double fromX, double toX) const
{
    QPen pen(m_colors[pathIndex % m_colors.size()], lineWidth, Qt::SolidLine, Qt::FlatCap,
        Qt::BevelJoin);
    painter.setPen(pen);
    painter.drawPolyline(polyline(m_paths[pathIndex], fromX, toX));
}

QRectF Plotter::bounds(std::size_t pathIndex, double fromX, double toX) const
{
    auto const points = polyline(m_paths[pathIndex], fromX, toX);
    if (points.isEmpty())
        return {};
    return points.boundingRect().adjusted(-reach, -reach, reach, reach);
}

QPolygonF Plotter::polyline(Path path, double fromX, double toX) const
{
    if (path.count == 0)
        return {};
    // A cut leaves a bare cap where a join was. It must lie outside the columns.
    auto const last = static_cast<double>(path.count - 1);
    auto const begin
        = static_cast<std::size_t>(std::clamp(std::floor((fromX - reach) / *m_dx), 0.0, last));
    auto const end
        = static_cast<std::size_t>(std::clamp(std::ceil((toX + reach) / *m_dx), 0.0, last));

    QPolygonF points;
    points.reserve(static_cast<qsizetype>(end - begin) + 2);
    if (begin == 0)
        points << QPointF(0.0, 0.0);
    for (auto index = begin; index <= end; ++index) {
        auto const place = point(path, index);
        // The painter would never finish a line to nowhere.
        auto const y = std::isnan(place.y()) ? baseline : place.y();
        points << QPointF(place.x(), std::clamp(y, -farAway, farAway));
    }
    return points;
}

} // namespace tensio
