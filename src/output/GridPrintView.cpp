#include "output/GridPrintView.h"

#include "core/NumberText.h"
#include "core/SelectionMarks.h"
#include "output/ReportDate.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace tensio {

namespace {

constexpr double gap = 10.0;
constexpr double col1Width = 60.0;
constexpr double col2Width = 40.0;
constexpr double col3Width = 30.0;

constexpr double smallFont = 10.0;
constexpr double largeFont = 14.0;
constexpr double footFont = 8.0;
constexpr double rowFont = 14.0;

constexpr auto footText = "＜ORV舌圧測定器での測定結果＞";

// Writes the lines of one block from its top downwards.
class BlockWriter {
public:
    BlockWriter(PrintCanvas& canvas, PrintRect const& block)
        : m_canvas(canvas)
        , m_block(block)
        , m_y(block.y)
    {
        canvas.strokeRect(block);
    }

    double height(double fontSize) const { return lineHeight(m_canvas, fontSize); }
    void moveDown(double distance) { m_y += distance; }

    void centre(double fontSize, std::string const& text)
    {
        m_canvas.drawText({m_block.x, m_y, m_block.width, height(fontSize)},
            {fontSize, TextAlignment::Centre}, text);
    }

    void row(std::string const& label, float pressure)
    {
        double x = m_block.x;
        auto const cell = [&](double width, std::string const& text) {
            m_canvas.drawText(
                {x, m_y, width, height(rowFont)}, {rowFont, TextAlignment::Right}, text);
            x += width;
        };
        cell(col1Width, label);
        cell(col2Width, pressureText(pressure));
        cell(col3Width, "kPa");
    }

private:
    PrintCanvas& m_canvas;
    PrintRect m_block;
    double m_y;
};

// Leaves the writer at the line of the time.
void writeHead(BlockWriter& writer, std::string const& name, Date date)
{
    writer.centre(smallFont, "氏名：" + name);
    writer.moveDown(writer.height(smallFont));
    writer.centre(smallFont, "測定日時：" + reportDate(date));
    writer.moveDown(writer.height(smallFont));
    writer.centre(smallFont, reportTime(date));
}

void writeFoot(BlockWriter& writer)
{
    writer.moveDown(1.25 * writer.height(largeFont));
    writer.centre(footFont, footText);
}

int countThatFit(double length, double blockLength)
{
    return std::max(0, static_cast<int>(std::floor(length / (blockLength + gap))));
}

} // namespace

GridPrintView::GridPrintView(std::string name, Measurements measurements)
    : m_name(std::move(name))
    , m_measurements(std::move(measurements))
    , m_blockWidth(140.0)
    , m_blockHeight(175.0)
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
    writeHead(writer, m_name, *measurement.timeStamp);
    writer.moveDown(1.5 * writer.height(smallFont));
    writer.centre(smallFont, "計測回数：　" + std::to_string(measurement.number) + "回目");
    for (auto const& line : {std::string("最大圧"), withUnit(*measurement.bestPressure),
             std::string("目標圧"), withUnit(*measurement.targetPressure)}) {
        writer.moveDown(writer.height(largeFont));
        writer.centre(largeFont, line);
    }
    writeFoot(writer);
}

void GridPrintView::drawSelection(PrintCanvas& canvas) const
{
    BlockWriter writer(canvas, blockFrame(0, 0));
    writeHead(writer, m_name, *m_measurements.back()->timeStamp);
    writer.moveDown(writer.height(largeFont));
    writer.centre(largeFont, "測定データ");
    writer.moveDown(writer.height(largeFont));
    for (std::size_t position = 0; position < m_measurements.size(); ++position) {
        writer.row(std::string(selectionMarks.at(position)) + "  ",
            *m_measurements[position]->bestPressure);
        writer.moveDown(writer.height(rowFont));
    }
    writer.moveDown(0.5 * writer.height(rowFont));
    writer.row("平均値:", m_selection.selectedAverage);
    writer.moveDown(writer.height(rowFont));
    writer.row("最大値:", m_selection.selectedMax);
    writer.moveDown(writer.height(rowFont));
    writer.row("最小値:", m_selection.selectedMin);
    writeFoot(writer);
}

PrintRect GridPrintView::blockFrame(int row, int column) const
{
    return {pageRect().x + column * (m_blockWidth + gap) + gap / 2.0,
        pageRect().y + row * (m_blockHeight + gap) + gap / 2.0, m_blockWidth, m_blockHeight};
}

} // namespace tensio
