#pragma once

#include <QColor>
#include <QPointF>
#include <QPolygonF>
#include <QTransform>

#include <cstdint>
#include <optional>
#include <vector>

class QPainter;

namespace tensio {

// Turns pressures into the polylines of a sweep recorder: points from the left edge to the right at
// a fixed step; a full sweep is followed by one in the next colour. Only the pressures are kept:
// where a point lies follows from its place among them and from the two scales.
//
// Coordinates are design units of the canvas, y upwards. A point at position i of its sweep lies at
// (dx × i, pressure × dy + 2); NaN counts as 0, the infinite is clamped. Sweeps begin at (0, 0).
class Plotter {
public:
    static constexpr std::int64_t MAX_POINTS_PER_SCREEN = 1200;
    static constexpr double lineWidth = 5.0;
    // How far from its points a polyline with bevel joins can leave ink, with the painter's
    // rounding to parts of a pixel.
    static constexpr double reach = lineWidth / 2.0 + 0.1;

    // One sweep: a run of consecutive pressures.
    struct Path {
        std::size_t first = 0;
        std::size_t count = 0;
    };

    // At least one color; sizes in design units; interval: seconds between successive points.
    Plotter(std::vector<QColor> colors, double canvasWidth, double canvasHeight, float interval);

    void newPath() { m_paths.push_back({m_pressurePoints.size(), 0}); }
    // Ignored until both scales are set, since no point can be placed without them.
    void addPressurePoint(float pressure);
    void setUpperBoundPressure(float upperBound);
    void setTimeWindow(std::int64_t seconds);
    void reset();

    std::vector<Path> const& paths() const { return m_paths; }
    // The running sweep.
    Path const& path() const { return m_paths.back(); }
    // Position of the next point in it.
    std::int64_t pressurePointIndex() const { return static_cast<std::int64_t>(path().count); }
    std::vector<float> const& pressurePoints() const { return m_pressurePoints; }
    std::int64_t pointsPerScreen() const { return m_pointsPerScreen; }

    // What follows needs both scales.
    QPointF point(Path path, std::size_t index) const;
    // Maps (position in its sweep, pressure) of a point onto the canvas.
    QTransform toUnits() const;
    // Number of resets so far.
    std::uint64_t resets() const { return m_resets; }

    // Encloses the ink that the points from first to end change in a sweep that ended before them.
    QRectF addedInk(std::size_t sweep, std::size_t first, std::size_t end) const;
    // Strokes what can touch the area of a sweep that ends before point `end`. Within the area the
    // picture is that of the whole sweep stroked; outside it is not.
    void draw(QPainter& painter, std::size_t sweep, std::size_t end, QRectF const& area) const;

private:
    QPolygonF polyline(Path path, std::size_t begin, std::size_t end) const;

    std::vector<QColor> m_colors;
    double m_canvasWidth;
    double m_canvasHeight;
    float m_interval;
    std::int64_t m_pointsPerScreen = 0;
    std::optional<double> m_dx;
    std::optional<double> m_dy;
    std::vector<Path> m_paths;
    std::vector<float> m_pressurePoints;
    std::uint64_t m_resets = 0;
};

} // namespace tensio
