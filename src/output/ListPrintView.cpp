#include "output/ListPrintView.h"

#include "core/NumberText.h"
#include "output/ReportDate.h"

#include <array>
#include <cmath>
#include <utility>

namespace tensio {

namespace {

constexpr double fontSize = 8.0;
// Left free at the foot of each page.
constexpr int spareLines = 2;

constexpr std::array columnEnds {130.0, 240.0, 310.0, 380.0, 450.0};

using Line = std::array<std::string, columnEnds.size()>;

Line lineOf(std::string const& name, Measurement const& measurement)
{
    auto const date = *measurement.timeStamp;
    return {name, reportDate(date) + " " + reportTime(date),
        std::to_string(measurement.number) + " 回目", withUnit(*measurement.bestPressure),
        withUnit(*measurement.targetPressure)};
}

void drawLine(PrintCanvas& canvas, PrintRect const& page, int index, Line const& line)
{
    double const height = lineHeight(canvas, fontSize);
    drawCells(canvas, {page.x, page.y + index * height, page.width, height}, columnEnds, 2,
        {fontSize}, line);
}

} // namespace

ListPrintView::ListPrintView(std::string name, Measurements measurements)
    : m_name(std::move(name))
    , m_measurements(std::move(measurements))
{
}

int ListPrintView::layOut(PrintCanvas const& canvas)
{
    auto const lines = std::floor(pageRect().height / lineHeight(canvas, fontSize));
    m_linesPerPage = static_cast<int>(lines) - spareLines;
    if (m_linesPerPage < 1 || pageRect().width < columnEnds.back())
        return 0;
    int const count = static_cast<int>(m_measurements.size()) + 1;
    return (count + m_linesPerPage - 1) / m_linesPerPage;
}

void ListPrintView::draw(PrintCanvas& canvas) const
{
    bool const hasHeading = currentPage() == 0;
    if (hasHeading)
        drawLine(canvas, pageRect(), 0, {"氏名", "測定日時", "計測回数", "最大圧", "目標圧"});
    for (int line = hasHeading ? 1 : 0; line < m_linesPerPage; ++line) {
        auto const index = static_cast<std::size_t>(currentPage() * m_linesPerPage + line - 1);
        if (index >= m_measurements.size())
            break;
        drawLine(canvas, pageRect(), line, lineOf(m_name, *m_measurements[index]));
    }
}

} // namespace tensio
