#include "output/CoursePrintView.h"

#include "core/DateText.h"
#include "core/NumberText.h"
#include "output/ReportDate.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace tensio {

namespace {

constexpr double noteTop = 18.0;
constexpr double noteHeight = 12.0;
constexpr double plotTop = 42.0;
constexpr double gap = 20.0;
constexpr double tableHeadHeight = 24.0;
constexpr double rowHeight = 15.0;
constexpr double leastWidth = 200.0;

double plotHeight(PrintRect const& page)
{
    return std::clamp(0.36 * page.height, 110.0, 250.0);
}

// Shares of the table's width.
constexpr std::array columnEnds {0.35, 0.44, 0.61, 0.78, 0.96};
using Row = std::array<std::string, columnEnds.size()>;

void drawRow(
    PrintCanvas& canvas, PrintRect const& row, Row const& texts, TextStyle style, Stroke rule)
{
    auto ends = columnEnds;
    for (auto& end : ends)
        end *= row.width;
    drawCells(canvas, row, ends, 1, style, texts);
    double const foot = row.y + row.height;
    canvas.strokeLine({{row.x, foot}, {row.x + row.width, foot}}, rule);
}

Row rowOf(CourseEntry const& entry)
{
    auto const measured
        = [&](float pressure) { return entry.presses > 0 ? withUnit(pressure) : std::string("—"); };
    return {dateOfDay(entry.start) + formatLocalTime(entry.start, " %H:%M"),
        std::to_string(entry.presses) + "回", measured(entry.best), measured(entry.average),
        withUnit(entry.target)};
}

} // namespace

CoursePrintView::CoursePrintView(Course course)
    : m_course(std::move(course))
{
    setSimulated(m_course.isSimulated);
}

int CoursePrintView::layOut(PrintCanvas const& /*canvas*/)
{
    auto const rowsIn = [](double height) {
        return static_cast<std::size_t>(std::max(0.0, (height - tableHeadHeight) / rowHeight));
    };
    auto const& page = pageRect();
    m_rowsOnFirstPage = rowsIn(page.height - plotTop - plotHeight(page) - gap);
    m_rowsPerPage = rowsIn(page.height - headingHeight);
    if (m_rowsOnFirstPage == 0 || page.width < leastWidth)
        return 0;
    auto const& entries = m_course.entries;
    m_ticks = dateTicks(entries.front().start, entries.back().start, Chart::mostTicks(page.width));
    auto const later = entries.size() - std::min(entries.size(), m_rowsOnFirstPage);
    return 1 + static_cast<int>((later + m_rowsPerPage - 1) / m_rowsPerPage);
}

void CoursePrintView::draw(PrintCanvas& canvas) const
{
    auto const& page = pageRect();
    auto const& entries = m_course.entries;
    auto const count = std::to_string(entries.size()) + "回";
    drawHeading(canvas, "経過", m_course.name,
        dateOfDay(entries.front().start) + " 〜 " + dateOfDay(entries.back().start) + "　" + count);
    if (currentPage() > 0) {
        auto const later = static_cast<std::size_t>(currentPage() - 1);
        drawTable(canvas, page.y + headingHeight, m_rowsOnFirstPage + later * m_rowsPerPage,
            m_rowsPerPage);
        return;
    }
    canvas.drawText({page.x, page.y + noteTop, page.width, noteHeight},
        {8.0, TextAlignment::Left, Ink::Caption},
        "氏名が同じ測定から選んだ" + count
            + "です。同じ氏名の別の方が含まれていないか確かめてください。");
    if (!m_course.isComplete)
        canvas.drawText({page.x, page.y + noteTop + noteHeight, page.width, noteHeight},
            {8.0, TextAlignment::Left, Ink::Caption}, courseIncompleteMessage);
    drawPlot(canvas, {page.x, page.y + plotTop, page.width, plotHeight(page)});
    drawTable(canvas, page.y + plotTop + plotHeight(page) + gap, 0, m_rowsOnFirstPage);
}

void CoursePrintView::drawPlot(PrintCanvas& canvas, PrintRect const& frame) const
{
    std::vector<float> pressures;
    for (auto const& entry : m_course.entries)
        pressures.insert(pressures.end(), {entry.best, entry.average, entry.target});
    Chart chart(canvas, frame, pressureScale(pressures), secondsTo(m_ticks.back().date));
    chart.drawLegend(10.0, Ink::Pressure, "● 最大圧");
    chart.drawLegend(60.0, Ink::Caption, "○ 平均");
    chart.drawLegend(102.0, Ink::Target, "― 目標圧");
    for (auto const& tick : m_ticks)
        chart.drawTick(
            secondsTo(tick.date), TextAlignment::Left, &tick == &m_ticks.back() ? "" : tick.text);
    chart.drawTarget(targetSteps());
    auto const bests = pointsOf(&CourseEntry::best);
    auto const averages = pointsOf(&CourseEntry::average);
    chart.drawLine(averages, {Ink::Caption, 0.8});
    chart.drawLine(bests, {Ink::Pressure, 1.8});
    for (auto const& point : averages)
        chart.drawDot(point, Ink::Caption, true);
    for (auto const& point : bests)
        chart.drawDot(point, Ink::Pressure);
    // Where there is no room for all, the newest are the ones to read.
    for (auto const& point : std::vector(bests.rbegin(), bests.rend()))
        chart.drawValue(point, Ink::Pressure);
}

void CoursePrintView::drawTable(
    PrintCanvas& canvas, double y, std::size_t first, std::size_t count) const
{
    auto const& page = pageRect();
    drawRow(canvas, {page.x, y, page.width, tableHeadHeight - 6.0},
        {"測定日時", "回数", "最大圧", "平均", "目標圧"}, {8.0, TextAlignment::Left, Ink::Caption},
        {Ink::Text, 0.8});
    y += tableHeadHeight;
    for (auto index = first; index < std::min(first + count, m_course.entries.size()); ++index) {
        drawRow(canvas, {page.x, y, page.width, rowHeight}, rowOf(m_course.entries[index]),
            {9.0, TextAlignment::Left, Ink::Text}, {Ink::Hairline, 0.4});
        y += rowHeight;
    }
}

double CoursePrintView::secondsTo(Date date) const
{
    return std::chrono::duration<double>(date - m_ticks.front().date).count();
}

std::vector<ChartPoint> CoursePrintView::pointsOf(float CourseEntry::*pressure) const
{
    std::vector<ChartPoint> points;
    for (auto const& entry : m_course.entries) {
        if (entry.presses > 0 && !std::isnan(entry.*pressure))
            points.push_back({secondsTo(entry.start), entry.*pressure});
    }
    return points;
}

// A target holds until the next session.
std::vector<ChartPoint> CoursePrintView::targetSteps() const
{
    std::vector<ChartPoint> steps;
    for (auto const& entry : m_course.entries) {
        double const x = secondsTo(entry.start);
        if (!steps.empty())
            steps.push_back({x, steps.back().pressure});
        steps.push_back({x, entry.target});
    }
    steps.push_back({secondsTo(m_ticks.back().date), steps.back().pressure});
    return steps;
}

} // namespace tensio
