#include "output/CurvesPrintView.h"

#include "core/NumberText.h"
#include "core/SelectionMarks.h"
#include "output/Chart.h"
#include "output/ReportDate.h"

#include <algorithm>
#include <span>
#include <utility>

namespace tensio {

namespace {

constexpr double usualHeight = 200.0;
// Of the smallest paper that has room for a curve.
constexpr double leastHeight = 120.0;
constexpr double leastWidth = 200.0;

constexpr double captionHeight = 16.0;
constexpr double gap = 12.0;
// Seconds.
constexpr double shortestRange = 6.0;

using Curves = std::span<std::shared_ptr<Measurement> const>;

// From the beginning of a pressing to the last of so many points, as in CSV files.
double secondsOf(std::size_t pointCount)
{
    return static_cast<double>(static_cast<float>(pointCount) * pointInterval);
}

struct Scales {
    Scale pressure;
    Scale time;
};

Scales scalesOf(Curves curves)
{
    std::vector<float> pressures;
    std::size_t longest = 0;
    for (auto const& curve : curves) {
        auto const& points = *curve->pressurePoints;
        pressures.insert(pressures.end(), points.begin(), points.end());
        pressures.insert(pressures.end(), {*curve->bestPressure, *curve->targetPressure});
        longest = std::max(longest, points.size());
    }
    return {pressureScale(pressures), scaleUpTo(std::max(shortestRange, secondsOf(longest)))};
}

void drawCurve(
    PrintCanvas& canvas, PrintRect const& frame, Scales const& scales, Measurement const& curve)
{
    Chart chart(canvas, frame, scales.pressure, scales.time.top);
    for (double time = 0.0; time <= scales.time.top; time += scales.time.step)
        chart.drawTick(time, TextAlignment::Centre,
            formatFixed(static_cast<float>(time), 0) + (time < scales.time.top ? "" : "秒"));
    auto const target = *curve.targetPressure;
    chart.drawTarget({{0.0, target}, {scales.time.top, target}});

    auto const& points = *curve.pressurePoints;
    // The line begins at rest, as on the screen.
    std::vector<ChartPoint> line {{0.0, 0.0f}};
    for (std::size_t index = 0; index < points.size(); ++index)
        line.push_back({secondsOf(index + 1), points[index]});
    chart.drawLine(line, {Ink::Pressure, 1.5});

    auto const best = std::ranges::find(points, *curve.bestPressure);
    if (best == points.end())
        return;
    ChartPoint const top {secondsOf(static_cast<std::size_t>(best - points.begin()) + 1), *best};
    chart.drawDot(top, Ink::Best);
    chart.drawValue(top, Ink::Best);
}

void drawCaption(PrintCanvas& canvas, PrintRect const& line, std::string const& mark,
    Measurement const& measurement)
{
    canvas.drawText({line.x, line.y, 78.0, line.height},
        {11.0, TextAlignment::Left, Ink::Text, true},
        mark + std::to_string(measurement.number) + "回目");
    canvas.drawText({line.x + 78.0, line.y, 50.0, line.height},
        {9.0, TextAlignment::Left, Ink::Caption}, reportTime(*measurement.timeStamp));
    canvas.drawText({line.x + 128.0, line.y, line.width - 128.0, line.height},
        {9.0, TextAlignment::Right, Ink::Text},
        "最大圧 " + withUnit(*measurement.bestPressure) + "　目標圧 "
            + withUnit(*measurement.targetPressure));
}

} // namespace

CurvesPrintView::CurvesPrintView(std::string name, Measurements measurements, bool isSelection)
    : m_name(std::move(name))
    , m_measurements(std::move(measurements))
    , m_isSelection(isSelection)
{
}

int CurvesPrintView::layOut(PrintCanvas const& /*canvas*/)
{
    double const room = pageRect().height - headingHeight;
    if (room < leastHeight || pageRect().width < leastWidth)
        return 0;
    m_curvesPerPage = std::max<std::size_t>(1, static_cast<std::size_t>(room / usualHeight));
    auto const pages = (m_measurements.size() + m_curvesPerPage - 1) / m_curvesPerPage;
    return static_cast<int>(pages);
}

void CurvesPrintView::draw(PrintCanvas& canvas) const
{
    auto const first = static_cast<std::size_t>(currentPage()) * m_curvesPerPage;
    auto const curves
        = Curves(m_measurements)
              .subspan(first, std::min(m_curvesPerPage, m_measurements.size() - first));
    auto const& page = pageRect();
    drawHeading(canvas, "波形", m_name,
        dateOfDay(*curves.front()->timeStamp) + (m_isSelection ? "　選択した測定" : ""));
    auto const scales = scalesOf(curves);
    double const height = (page.height - headingHeight) / static_cast<double>(m_curvesPerPage);
    for (std::size_t index = 0; index < curves.size(); ++index) {
        double const y = page.y + headingHeight + static_cast<double>(index) * height;
        auto const mark
            = m_isSelection ? std::string(selectionMarks.at(first + index)) + "　" : std::string();
        drawCaption(canvas, {page.x, y, page.width, captionHeight}, mark, *curves[index]);
        drawCurve(canvas, {page.x, y + captionHeight, page.width, height - captionHeight - gap},
            scales, *curves[index]);
    }
}

} // namespace tensio
