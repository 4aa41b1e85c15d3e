#include "output/Chart.h"

#include "core/NumberText.h"

#include <algorithm>
#include <cmath>

namespace tensio {

namespace {

constexpr double fontSize = 8.0;
constexpr double textHeight = 10.0;
// Around the plot, for the names, the numbers and the target's name.
constexpr double head = 27.0;
constexpr double foot = 16.0;
constexpr double leftGutter = 24.0;
constexpr double rightGutter = 20.0;

constexpr double tickLength = 4.0;
constexpr double tickTextWidth = 30.0;
// Between a tick and the text to its right.
constexpr double tickGap = 3.0;
constexpr double figureWidth = 4.4;
constexpr double dotRadius = 3.0;
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
    auto const [low, high] = std::minmax(other.y, line.back().y);
    if (point.y >= low && point.y <= high)
        return;
    other.y = point.y < low ? high : low;
    line.back() = point;
}

bool overlap(PrintRect const& one, PrintRect const& other)
{
    return one.x < other.x + other.width && other.x < one.x + one.width
        && one.y < other.y + other.height && other.y < one.y + one.height;
}

} // namespace

Scale scaleUpTo(double value)
{
    constexpr double mostSteps = 7.0;
    double step = 1.0;
    for (int index = 0; step * mostSteps < value; ++index)
        step *= index % 3 == 1 ? 2.5 : 2.0;
    return {step * std::ceil(value / step), step};
}

Scale pressureScale(std::vector<float> const& pressures)
{
    float top = 10.0f;
    for (auto const pressure : pressures) {
        if (std::isfinite(pressure))
            top = std::max(top, pressure);
    }
    return scaleUpTo(static_cast<double>(std::min(top, 200.0f)));
}

Chart::Chart(PrintCanvas& canvas, PrintRect const& frame, Scale const& pressures, double range)
    : m_canvas(canvas)
    , m_plot {frame.x + leftGutter, frame.y + head, frame.width - leftGutter - rightGutter,
          frame.height - head - foot}
    , m_pressures(pressures)
    , m_range(range)
{
    drawGrid();
}

void Chart::drawGrid() const
{
    auto const write = [&](double y, std::string const& text) {
        drawText({m_plot.x - leftGutter, y - textHeight / 2.0, leftGutter - 6.0, textHeight},
            TextAlignment::Right, Ink::Caption, text);
    };
    write(m_plot.y - 12.0, "kPa");
    for (double step = 0.0; step <= m_pressures.top; step += m_pressures.step) {
        auto const pressure = static_cast<float>(step);
        drawLine({{0.0, pressure}, {m_range, pressure}},
            step > 0.0 ? Stroke {Ink::Hairline, 0.5} : Stroke {Ink::Text, 0.8});
        write(place({0.0, pressure}).y, formatFixed(pressure, 0));
    }
}

void Chart::drawLegend(double x, Ink ink, std::string const& text) const
{
    drawText({m_plot.x + x, m_plot.y - head, m_plot.width - x, textHeight}, TextAlignment::Left,
        ink, text);
}

std::size_t Chart::mostTicks(double frameWidth)
{
    auto const intervals = (frameWidth - leftGutter - rightGutter) / (tickGap + tickTextWidth);
    return 1 + static_cast<std::size_t>(intervals);
}

void Chart::drawTick(double x, TextAlignment alignment, std::string const& text) const
{
    auto const top = place({x, 0.0f});
    m_canvas.strokeLine({top, {top.x, top.y + tickLength}}, {Ink::Text, 0.8});
    double const left
        = alignment == TextAlignment::Centre ? top.x - tickTextWidth / 2.0 : top.x + tickGap;
    drawText(
        {left, top.y + tickLength + 1.5, tickTextWidth, textHeight}, alignment, Ink::Caption, text);
}

void Chart::drawLine(std::vector<ChartPoint> const& points, Stroke stroke) const
{
    std::vector<PrintPoint> line;
    for (auto const& point : points) {
        if (!std::isnan(point.pressure))
            append(line, place(point));
    }
    if (line.size() > 1)
        m_canvas.strokeLine(line, stroke);
}

void Chart::drawTarget(std::vector<ChartPoint> const& points) const
{
    drawLine(points, {Ink::Target, 1.2});
    auto const end = place(points.back());
    if (!std::isnan(end.y))
        drawText({end.x + 3.0, end.y - textHeight / 2.0, rightGutter - 3.0, textHeight},
            TextAlignment::Left, Ink::Target, "目標");
}

void Chart::drawDot(ChartPoint point, Ink ink, bool isOpen)
{
    auto const centre = place(point);
    double const radius = isOpen ? 2.0 : dotRadius;
    m_canvas.fillCircle(centre, radius, ink);
    if (isOpen)
        m_canvas.fillCircle(centre, radius - 1.0, Ink::Paper);
    m_taken.push_back({centre.x - radius, centre.y - radius, 2.0 * radius, 2.0 * radius});
}

void Chart::drawValue(ChartPoint point, Ink ink)
{
    auto const text = pressureText(point.pressure);
    auto const dot = place(point);
    double const width = std::min(figureWidth * static_cast<double>(text.size()) + 1.0, 40.0);
    // Clear of the numbers and the unit of the scale.
    PrintRect const rect {
        std::clamp(dot.x - width / 2.0, m_plot.x, m_plot.x + m_plot.width - width),
        dot.y - dotRadius - textHeight, width, textHeight};
    if (std::ranges::any_of(m_taken, [&](auto const& taken) { return overlap(rect, taken); }))
        return;
    m_taken.push_back(rect);
    // No line shall cross the figures.
    double const middle = rect.y + textHeight / 2.0;
    m_canvas.strokeLine({{rect.x, middle}, {rect.x + width, middle}}, {Ink::Paper, fontSize});
    m_canvas.drawText(rect, {fontSize, TextAlignment::Centre, ink, true}, text);
}

PrintPoint Chart::place(ChartPoint point) const
{
    double const pressure = std::clamp(static_cast<double>(point.pressure), 0.0, m_pressures.top);
    return {m_plot.x + point.x / m_range * m_plot.width,
        m_plot.y + m_plot.height * (1.0 - pressure / m_pressures.top)};
}

void Chart::drawText(
    PrintRect rect, TextAlignment alignment, Ink ink, std::string const& text) const
{
    m_canvas.drawText(rect, {fontSize, alignment, ink}, text);
}

} // namespace tensio
