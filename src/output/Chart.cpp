#include "output/Chart.h"

#include "core/NumberText.h"

#include <algorithm>
#include <cmath>

namespace tensio {

namespace {

constexpr double fontSize = 8.0;
constexpr double textHeight = 10.0;
// Beside the plot, for numbers on the left and the target's name on the right.
constexpr double gutter = 24.0;
// Above the plot, for the unit; the rest of the margins is below it.
constexpr double head = 18.0;
constexpr double tickLength = 4.0;
constexpr double belowTick = 5.5;
constexpr double valueWidth = 22.0;
constexpr double dotRadius = 3.0;

constexpr double mostSteps = 7.0;
constexpr float lowestTop = 10.0f;
constexpr float highestTop = 200.0f;

// Of a column narrower than the pen only its lowest and highest points are kept: a painter needs
// seconds for ten minutes of points.
constexpr double columnWidth = 0.5;

void append(std::vector<PrintPoint>& line, PrintPoint point)
{
    if (line.size() < 2 || point.x - line[line.size() - 2].x >= columnWidth) {
        line.push_back(point);
        return;
    }
    auto& other = line[line.size() - 2];
    auto& last = line.back();
    auto const [low, high] = std::minmax(other.y, last.y);
    if (point.y >= low && point.y <= high)
        return;
    other.y = point.y < low ? high : low;
    last = point;
}

bool overlap(PrintRect const& one, PrintRect const& other)
{
    return one.x < other.x + other.width && other.x < one.x + one.width
        && one.y < other.y + other.height && other.y < one.y + one.height;
}

} // namespace

Scale scaleUpTo(double value)
{
    double step = 1.0;
    for (int index = 0; step * mostSteps < value; ++index)
        step *= index % 3 == 1 ? 2.5 : 2.0;
    return {step * std::ceil(value / step), step};
}

Scale pressureScale(std::vector<float> const& pressures)
{
    float top = lowestTop;
    for (auto const pressure : pressures) {
        if (std::isfinite(pressure))
            top = std::max(top, pressure);
    }
    return scaleUpTo(static_cast<double>(std::min(top, highestTop)));
}

Chart::Chart(PrintCanvas& canvas, PrintRect const& frame, Scale const& pressures, double range)
    : m_canvas(canvas)
    , m_plot {frame.x + gutter, frame.y + head, frame.width - 2.0 * gutter, frame.height - margins}
    , m_pressures(pressures)
    , m_range(range)
{
}

void Chart::drawGrid() const
{
    double const right = m_plot.x + m_plot.width;
    for (double pressure = 0.0; pressure <= m_pressures.top; pressure += m_pressures.step) {
        double const y = place({0.0, static_cast<float>(pressure)}).y;
        auto const stroke = pressure > 0.0 ? Stroke {Ink::Hairline, 0.5} : Stroke {Ink::Text, 0.8};
        m_canvas.strokeLine({{m_plot.x, y}, {right, y}}, stroke);
        drawText({m_plot.x - gutter, y - textHeight / 2.0, gutter - 5.0, textHeight},
            TextAlignment::Right, Ink::Caption, formatFixed(static_cast<float>(pressure), 0));
    }
    drawText({m_plot.x - gutter, m_plot.y - head + 1.0, gutter - 5.0, textHeight},
        TextAlignment::Right, Ink::Caption, "kPa");
}

void Chart::drawTick(double x) const
{
    double const y = m_plot.y + m_plot.height;
    m_canvas.strokeLine({{positionOf(x), y}, {positionOf(x), y + tickLength}}, {Ink::Text, 0.8});
}

void Chart::drawTickText(double x, std::string const& text) const
{
    drawText(
        {positionOf(x) - gutter, m_plot.y + m_plot.height + belowTick, 2.0 * gutter, textHeight},
        TextAlignment::Centre, Ink::Caption, text);
}

void Chart::drawTextAfterTick(double x, double width, std::string const& text) const
{
    drawText({positionOf(x) + 3.0, m_plot.y + m_plot.height + belowTick, width, textHeight},
        TextAlignment::Left, Ink::Caption, text);
}

void Chart::drawLine(std::vector<ChartPoint> const& points, Stroke stroke) const
{
    std::vector<PrintPoint> line;
    auto const end = [&] {
        if (line.size() > 1)
            m_canvas.strokeLine(line, stroke);
        line.clear();
    };
    for (auto const& point : points) {
        if (std::isnan(point.pressure))
            end();
        else
            append(line, place(point));
    }
    end();
}

void Chart::drawTargetText(float pressure) const
{
    if (std::isnan(pressure))
        return;
    auto const end = place({m_range, pressure});
    drawText({end.x + 3.0, end.y - textHeight / 2.0, gutter - 3.0, textHeight}, TextAlignment::Left,
        Ink::Target, "目標");
}

void Chart::drawDot(ChartPoint point, Ink ink, bool isOpen)
{
    if (std::isnan(point.pressure))
        return;
    auto const centre = place(point);
    double const radius = isOpen ? 2.0 : dotRadius;
    m_canvas.fillCircle(centre, radius, ink);
    if (isOpen)
        m_canvas.fillCircle(centre, radius - 1.0, Ink::Paper);
    m_taken.push_back({centre.x - radius, centre.y - radius, 2.0 * radius, 2.0 * radius});
}

void Chart::drawValue(ChartPoint point, Ink ink)
{
    if (std::isnan(point.pressure))
        return;
    auto const dot = place(point);
    double const right = m_plot.x + m_plot.width - valueWidth;
    PrintRect const rect {std::clamp(dot.x - valueWidth / 2.0, m_plot.x, right),
        dot.y - dotRadius - textHeight - 1.0, valueWidth, textHeight};
    if (std::ranges::any_of(m_taken, [&](auto const& taken) { return overlap(rect, taken); }))
        return;
    m_taken.push_back(rect);
    // No line shall cross the figures.
    double const middle = rect.y + textHeight / 2.0;
    m_canvas.strokeLine(
        {{rect.x, middle}, {rect.x + valueWidth, middle}}, {Ink::Paper, textHeight});
    m_canvas.drawText(
        rect, {fontSize, TextAlignment::Centre, ink, true}, pressureText(point.pressure));
}

PrintPoint Chart::place(ChartPoint point) const
{
    double const pressure = std::clamp(static_cast<double>(point.pressure), 0.0, m_pressures.top);
    return {positionOf(point.x), m_plot.y + m_plot.height * (1.0 - pressure / m_pressures.top)};
}

void Chart::drawText(
    PrintRect rect, TextAlignment alignment, Ink ink, std::string const& text) const
{
    m_canvas.drawText(rect, {fontSize, alignment, ink}, text);
}

} // namespace tensio
