#include "output/GridPrintView.h"

#include "core/NumberText.h"
#include "core/SelectionMarks.h"
#include "output/ReportDate.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace tensio {

namespace {

constexpr double gap = 10.0;
// Of a summary's rows.
constexpr std::array columnEnds {60.0, 100.0, 130.0};

constexpr double smallFont = 10.0;
constexpr double largeFont = 14.0;
constexpr double footFont = 8.0;

// Writes a block line by line from its top downwards.
class BlockWriter {
public:
    BlockWriter(PrintCanvas& canvas, PrintRect const& block)
        : m_canvas(canvas)
        , m_block(block)
        , m_y(block.y)
    {
        canvas.strokeRect(block);
    }

    void head(std::string const& name, Date date)
    {
        centre(0.0, smallFont, "氏名：" + name);
        centre(1.0, smallFont, "測定日時：" + reportDate(date));
        centre(1.0, smallFont, reportTime(date));
    }

    // So many lines of its size below the line before.
    void centre(double lines, double fontSize, std::string const& text)
    {
        moveDown(lines, fontSize);
        m_canvas.drawText(line(fontSize), {fontSize, TextAlignment::Centre}, text);
    }

    void row(double lines, std::string const& label, float pressure)
    {
        moveDown(lines, largeFont);
        std::array const texts {label, pressureText(pressure), std::string("kPa")};
        drawCells(m_canvas, line(largeFont), columnEnds, 0, {largeFont}, texts);
    }

    void foot()
    {
        moveDown(1.25, largeFont);
        centre(0.0, footFont, "＜ORV舌圧測定器での測定結果＞");
    }

private:
    void moveDown(double lines, double fontSize) { m_y += lines * lineHeight(m_canvas, fontSize); }
    PrintRect line(double fontSize) const
    {
        return {m_block.x, m_y, m_block.width, lineHeight(m_canvas, fontSize)};
    }

    PrintCanvas& m_canvas;
    PrintRect m_block;
    double m_y;
};

int countThatFit(double length, double blockLength)
{
    return std::max(0, static_cast<int>(std::floor(length / (blockLength + gap))));
}

} // namespace

GridPrintView::GridPrintView(std::string name, Measurements measurements)
    : m_name(std::move(name))
    , m_measurements(std::move(measurements))
{
}

GridPrintView::GridPrintView(
    std::string name, Measurements measurements, SelectionSummary selection)
    : m_name(std::move(name))
    , m_measurements(std::move(measurements))
    , m_selection(selection)
    , m_blockWidth(160.0)
    , m_blockHeight(225.0)
{
}

int GridPrintView::layOut(PrintCanvas const& /*canvas*/)
{
    m_blockRowsPerPage = countThatFit(pageRect().height, m_blockHeight);
    m_blockColumnsPerPage = countThatFit(pageRect().width, m_blockWidth);
    if (blocksPerPage() == 0)
        return 0;
    int const count = static_cast<int>(m_measurements.size());
    return (count + blocksPerPage() - 1) / blocksPerPage();
}

void GridPrintView::draw(PrintCanvas& canvas) const
{
    if (m_selection.selectedAverage > 0.0f)
        drawSelection(canvas);
    else
        drawGrid(canvas);
}

void GridPrintView::drawGrid(PrintCanvas& canvas) const
{
    for (int block = 0; block < blocksPerPage(); ++block) {
        int const index = currentPage() * blocksPerPage() + block;
        if (index >= std::ssize(m_measurements))
            break;
        drawMeasurement(canvas,
            blockFrame(block / m_blockColumnsPerPage, block % m_blockColumnsPerPage),
            *m_measurements[static_cast<std::size_t>(index)]);
    }
}

void GridPrintView::drawMeasurement(
    PrintCanvas& canvas, PrintRect block, Measurement const& measurement) const
{
    BlockWriter writer(canvas, block);
    writer.head(m_name, *measurement.timeStamp);
    writer.centre(1.5, smallFont, "計測回数：　" + std::to_string(measurement.number) + "回目");
    writer.centre(1.0, largeFont, "最大圧");
    writer.centre(1.0, largeFont, withUnit(*measurement.bestPressure));
    writer.centre(1.0, largeFont, "目標圧");
    writer.centre(1.0, largeFont, withUnit(*measurement.targetPressure));
    writer.foot();
}

void GridPrintView::drawSelection(PrintCanvas& canvas) const
{
    BlockWriter writer(canvas, blockFrame(0, 0));
    writer.head(m_name, *m_measurements.back()->timeStamp);
    writer.centre(1.0, largeFont, "測定データ");
    for (std::size_t position = 0; position < m_measurements.size(); ++position)
        writer.row(1.0, std::string(selectionMarks.at(position)) + "  ",
            *m_measurements[position]->bestPressure);
    writer.row(1.5, "平均値:", m_selection.selectedAverage);
    writer.row(1.0, "最大値:", m_selection.selectedMax);
    writer.row(1.0, "最小値:", m_selection.selectedMin);
    writer.foot();
}

PrintRect GridPrintView::blockFrame(int row, int column) const
{
    return {pageRect().x + column * (m_blockWidth + gap) + gap / 2.0,
        pageRect().y + row * (m_blockHeight + gap) + gap / 2.0, m_blockWidth, m_blockHeight};
}

} // namespace tensio
