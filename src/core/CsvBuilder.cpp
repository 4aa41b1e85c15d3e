#include "core/CsvBuilder.h"

#include "core/DateText.h"
#include "core/NumberText.h"
#include "core/SavingMessages.h"
#include "core/SelectionMarks.h"

#include <algorithm>
#include <utility>

namespace tensio {

namespace {

using Cells = std::pair<std::string, std::string>;

std::string inOneCell(std::string text)
{
    std::ranges::replace_if(
        text,
        [](char character) { return character == '\t' || character == '\r' || character == '\n'; },
        ' ');
    return text;
}

std::string tagOf(float pressure, float min, float max)
{
    if (pressure == max)
        return "max";
    return pressure == min ? "min" : "";
}

} // namespace

CsvBuilder::CsvBuilder(std::string newline, std::string col)
    : m_newline(std::move(newline))
    , m_col(std::move(col))
{
}

CsvBuilder& CsvBuilder::appendHeader(std::string const& name, std::string const& date)
{
    appendLine({"氏名", inOneCell(name)});
    appendLine({"測定日時", date});
    appendLine({});
    return *this;
}

void CsvBuilder::appendLine(std::vector<std::string> const& cells)
{
    for (auto const& cell : cells)
        m_csv.append(&cell == &cells.front() ? "" : m_col).append(cell);
    m_csv += m_newline;
}

void CsvBuilder::appendBlocks(Measurements const& measurements, auto const& cellsOf)
{
    for (auto const& measurement : measurements) {
        auto const [first, second] = cellsOf(*measurement);
        m_csv.append(first).append(m_col).append(second).append(m_col).append(m_col);
    }
    m_csv += m_newline;
}

std::string const& CsvBuilder::build(Measurements const& measurements)
{
    appendBlocks(measurements, [](auto const& each) {
        return Cells {std::to_string(each.number) + "回目", ""};
    });
    appendBlocks(measurements, [](auto const& each) {
        return Cells {"最大値（kPa）", pressureText(*each.bestPressure)};
    });
    appendBlocks(measurements, [](auto const& each) {
        return Cells {"目標圧（kPa）", pressureText(*each.targetPressure)};
    });
    appendBlocks(measurements, [](auto const&) {
        return Cells {"測定時間（秒）", "測定値（kPa）"};
    });
    std::size_t longest = 0;
    for (auto const& measurement : measurements)
        longest = std::max(longest, measurement->pressurePoints->size());
    for (std::size_t index = 0; index < longest; ++index) {
        auto const time = formatFixed(static_cast<float>(index + 1) * pointInterval, 2);
        appendBlocks(measurements, [&](auto const& each) {
            auto const& points = *each.pressurePoints;
            return index < points.size() ? Cells {time, pressureText(points[index])} : Cells {};
        });
    }
    return m_csv;
}

std::string const& CsvBuilder::buildSelected(
    Measurements const& measurements, float average, float min, float max)
{
    appendLine({"選択した最大圧データ(kPa)"});
    for (std::size_t position = 0; position < measurements.size(); ++position) {
        auto const best = *measurements[position]->bestPressure;
        appendLine({selectionMarks.at(position), pressureText(best), tagOf(best, min, max)});
    }
    appendLine({});
    appendLine({"選択した最大圧データの平均値(kPa)"});
    appendLine({"", pressureText(average)});
    return m_csv;
}

std::string const& CsvBuilder::buildCourse(Course const& course)
{
    if (course.isSimulated) {
        appendLine({simulatedMessage});
        appendLine({});
    }
    if (!course.isComplete) {
        appendLine({courseIncompleteMessage});
        appendLine({});
    }
    appendLine({"測定日時", "回数", "最大圧（kPa）", "平均（kPa）", "目標圧（kPa）"});
    for (auto const& entry : course.entries) {
        auto const measured = [&](float pressure) {
            return entry.presses > 0 ? pressureText(pressure) : std::string();
        };
        appendLine({dateAndMinute(entry.start), std::to_string(entry.presses), measured(entry.best),
            measured(entry.average), pressureText(entry.target)});
    }
    return m_csv;
}

CsvBuilder csvFile(std::string const& name, std::string const& date)
{
    return CsvBuilder("\r\n", "\t").appendHeader(name, date);
}

std::string csvOfCourse(Course const& course)
{
    auto const& entries = course.entries;
    auto const period
        = dateAndMinute(entries.front().start) + " 〜 " + dateAndMinute(entries.back().start);
    return csvFile(course.name, period).buildCourse(course);
}

} // namespace tensio
