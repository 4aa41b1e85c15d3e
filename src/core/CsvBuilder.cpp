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

CsvBuilder begin(std::string const& name, std::string const& date)
{
    CsvBuilder builder("\r\n", "\t");
    builder.appendHeader(name, date);
    return builder;
}

} // namespace

CsvBuilder::CsvBuilder(std::string newline, std::string col)
    : m_newline(std::move(newline))
    , m_col(std::move(col))
{
}

CsvBuilder& CsvBuilder::appendHeader(std::string const& name, std::string const& date)
{
    m_csv += "氏名" + m_col + inOneCell(name) + m_newline;
    m_csv += "測定日時" + m_col + date + m_newline;
    m_csv += m_newline;
    return *this;
}

void CsvBuilder::appendLine(Measurements const& measurements, auto const& cellsOf)
{
    for (auto const& measurement : measurements) {
        auto const [first, second] = cellsOf(*measurement);
        m_csv.append(first).append(m_col).append(second).append(m_col).append(m_col);
    }
    m_csv += m_newline;
}

std::string const& CsvBuilder::build(Measurements const& measurements)
{
    appendLine(measurements, [](auto const& each) {
        return Cells {std::to_string(each.number) + "回目", ""};
    });
    appendLine(measurements, [](auto const& each) {
        return Cells {"最大値（kPa）", pressureText(*each.bestPressure)};
    });
    appendLine(measurements, [](auto const& each) {
        return Cells {"目標圧（kPa）", pressureText(*each.targetPressure)};
    });
    appendLine(measurements, [](auto const&) { return Cells {"測定時間（秒）", "測定値（kPa）"}; });
    std::size_t longest = 0;
    for (auto const& measurement : measurements)
        longest = std::max(longest, measurement->pressurePoints->size());
    for (std::size_t index = 0; index < longest; ++index) {
        auto const time = formatFixed(static_cast<float>(index + 1) * pointInterval, 2);
        appendLine(measurements, [&](auto const& each) {
            auto const& points = *each.pressurePoints;
            return index < points.size() ? Cells {time, pressureText(points[index])} : Cells {};
        });
    }
    return m_csv;
}

std::string const& CsvBuilder::buildSelected(
    Measurements const& measurements, float average, float min, float max)
{
    m_csv += "選択した最大圧データ(kPa)" + m_newline;
    for (std::size_t position = 0; position < measurements.size(); ++position) {
        auto const best = *measurements[position]->bestPressure;
        m_csv += selectionMarks.at(position) + m_col + pressureText(best) + m_col
            + tagOf(best, min, max) + m_newline;
    }
    m_csv += m_newline;
    m_csv += "選択した最大圧データの平均値(kPa)" + m_newline;
    m_csv += m_col + pressureText(average) + m_newline;
    return m_csv;
}

std::string const& CsvBuilder::buildCourse(Course const& course)
{
    if (course.isSimulated)
        m_csv += simulatedMessage + m_newline + m_newline;
    if (!course.isComplete)
        m_csv += courseIncompleteMessage + m_newline + m_newline;
    m_csv += "測定日時" + m_col + "回数" + m_col + "最大圧（kPa）" + m_col + "平均（kPa）" + m_col
        + "目標圧（kPa）" + m_newline;
    for (auto const& entry : course.entries) {
        m_csv += dateAndMinute(entry.start) + m_col + std::to_string(entry.presses);
        for (auto const pressure : {entry.best, entry.average})
            m_csv += m_col + (entry.presses > 0 ? pressureText(pressure) : "");
        m_csv += m_col + pressureText(entry.target) + m_newline;
    }
    return m_csv;
}

std::string csvOfAll(
    std::string const& name, std::string const& date, Measurements const& measurements)
{
    return begin(name, date).build(measurements);
}

std::string csvOfSelected(std::string const& name, std::string const& date,
    Measurements const& measurements, float average, float min, float max)
{
    return begin(name, date).buildSelected(measurements, average, min, max);
}

std::string csvOfCourse(Course const& course)
{
    auto const& entries = course.entries;
    auto const period
        = dateAndMinute(entries.front().start) + " 〜 " + dateAndMinute(entries.back().start);
    return begin(course.name, period).buildCourse(course);
}

} // namespace tensio
