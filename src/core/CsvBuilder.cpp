#include "core/CsvBuilder.h"

#include "core/DateText.h"
#include "core/NumberText.h"
#include "core/SavingMessages.h"
#include "core/SelectionMarks.h"

#include <algorithm>
#include <array>
#include <utility>

namespace tensio {

namespace {

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

std::string const& CsvBuilder::build(Measurements const& measurements)
{
    appendTitles(measurements);
    appendPoints(measurements);
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

void CsvBuilder::appendTitles(Measurements const& measurements)
{
    std::array<std::string, 4> rows;
    for (auto const& measurement : measurements) {
        rows[0] += std::to_string(measurement->number) + "回目" + m_col + m_col + m_col;
        rows[1]
            += "最大値（kPa）" + m_col + pressureText(*measurement->bestPressure) + m_col + m_col;
        rows[2]
            += "目標圧（kPa）" + m_col + pressureText(*measurement->targetPressure) + m_col + m_col;
        rows[3] += "測定時間（秒）" + m_col + "測定値（kPa）" + m_col + m_col;
    }
    for (auto const& row : rows)
        m_csv += row + m_newline;
}

void CsvBuilder::appendPoints(Measurements const& measurements)
{
    std::size_t longest = 0;
    for (auto const& measurement : measurements)
        longest = std::max(longest, measurement->pressurePoints->size());

    for (std::size_t index = 0; index < longest; ++index) {
        auto const time = formatFixed(static_cast<float>(index + 1) * pointInterval, 2);
        for (auto const& measurement : measurements) {
            auto const& points = *measurement->pressurePoints;
            if (index < points.size())
                m_csv.append(time)
                    .append(m_col)
                    .append(pressureText(points[index]))
                    .append(m_col)
                    .append(m_col);
            else
                m_csv.append(m_col).append(m_col).append(m_col);
        }
        m_csv += m_newline;
    }
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
