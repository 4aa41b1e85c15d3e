#include "StreamCheck.h"

#include "PlayedStream.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace tensio::fuzz {

namespace {

bool isSame(float left, float right)
{
    return left == right || (std::isnan(left) && std::isnan(right));
}

std::string brokenReading(PlayedStream const& played)
{
    for (auto const& [seconds, pressure, shown] : played.readings) {
        // Three characters and a tenth say at most nine billion.
        if (std::isfinite(pressure) && std::abs(pressure) > 9.0e9f)
            return "a reading is one that a record can say";
        if (!isSame(shown, pressure > 0.0f ? pressure : 0.0f))
            return "what is shown is the reading, never below 0";
    }
    return {};
}

// Which measurement each reading stands in.
std::vector<std::size_t> placesOf(PlayedStream const& played, std::vector<float>& points)
{
    std::vector<std::size_t> places;
    auto const append = [&](std::vector<float> const& more) {
        points.insert(points.end(), more.begin(), more.end());
        places.resize(points.size(), places.empty() ? 0 : places.back() + 1);
    };
    for (auto const& each : played.finished)
        append(*each->pressurePoints);
    append(played.unfinishedPoints);
    return places;
}

std::string brokenCut(PlayedStream const& played)
{
    std::vector<float> points;
    auto const places = placesOf(played, points);
    if (!std::ranges::equal(points, played.readings, isSame, {}, &Reading::pressure))
        return "every reading stands in one measurement, in order";
    bool hasPress = false;
    for (std::size_t index = 0; index + 1 < points.size(); ++index) {
        hasPress = hasPress || points[index] > 0.0f;
        auto const gap = played.readings[index + 1].seconds - played.readings[index].seconds;
        bool const isCut = places[index + 1] != places[index];
        if (isCut ? gap < 0.999 || !hasPress : gap > 2.001 && hasPress)
            return "a press ends after 1 to 2 s of silence";
        hasPress = hasPress && !isCut;
    }
    return {};
}

std::string brokenMeasurement(PlayedStream const& played)
{
    int number = 1;
    for (auto const& each : played.finished) {
        float best = 0.0f;
        for (auto const point : *each->pressurePoints)
            best = point > best ? point : best;
        if (each->number != number++)
            return "measurements are numbered from 1";
        if (each->bestPressure != best || best == 0.0f)
            return "the best pressure is the highest, and above 0";
        if (each->targetPressure != played.target)
            return "the target is the base times the factor";
    }
    return {};
}

// The cells of a file that is UTF-16, or of as much of it as is.
std::vector<std::vector<std::string>> cellsOf(std::string_view csv)
{
    std::vector<std::vector<std::string>> rows(1, std::vector<std::string>(1));
    for (std::size_t at = 2; at + 1 < csv.size(); at += 2) {
        // Only ASCII is looked at; the rest stands for itself.
        auto const unit = csv[at + 1] == 0 ? csv[at] : '?';
        if (unit == '\t')
            rows.back().emplace_back();
        else if (unit == '\n')
            rows.emplace_back(1);
        else if (unit != '\r')
            rows.back().back() += unit;
    }
    return rows;
}

bool reads(std::string const& cell, float value)
{
    float found = 0.0f;
    auto const* const end = cell.data() + cell.size();
    auto const result = std::from_chars(cell.data(), end, found, std::chars_format::fixed);
    return result.ec == std::errc() && result.ptr == end
        && (isSame(found, value) || std::abs(found - value) <= 0.0501f + std::abs(value) * 1e-6f);
}

std::string brokenFile(PlayedStream const& played)
{
    if (played.finished.empty())
        return played.csv.empty() ? "" : "without a measurement there is no file";
    auto const rows = cellsOf(played.csv);
    std::size_t longest = 0;
    for (auto const& each : played.finished)
        longest = std::max(longest, each->pressurePoints->size());
    constexpr std::size_t firstPoint = 7;
    if (rows.size() != firstPoint + longest + 1
        || rows[0] != std::vector<std::string> {"??", "? ???"})
        return "the file has the name, and a row for each point";
    std::string const failure = "the file says what was measured";
    for (std::size_t column = 0; column < played.finished.size() * 3; column += 3) {
        auto const& measurement = *played.finished[column / 3];
        auto const& points = *measurement.pressurePoints;
        if (rows[3].at(column) != std::to_string(measurement.number) + "??"
            || !reads(rows[4].at(column + 1), *measurement.bestPressure)
            || !reads(rows[5].at(column + 1), played.target))
            return failure;
        for (std::size_t row = 0; row < longest; ++row) {
            auto const* const cells = &rows[firstPoint + row].at(column);
            bool const isRight = row < points.size()
                ? reads(cells[0], static_cast<float>(row + 1) * 0.05f)
                    && reads(cells[1], points[row])
                : cells[0].empty() && cells[1].empty();
            if (!isRight)
                return failure;
        }
    }
    return {};
}

std::string broken(PlayedStream const& played)
{
    for (auto const& failure : {played.failure, brokenReading(played), brokenCut(played),
             brokenMeasurement(played), brokenFile(played)}) {
        if (!failure.empty())
            return failure;
    }
    return played.timersLeft == 1 ? "" : "no timer but the clock outlives the session";
}

} // namespace

std::string brokenProperty(std::string_view bytes)
{
    auto const failure = broken(playRecords(bytes));
    return failure.empty() ? broken(playBytes(bytes)) : failure;
}

} // namespace tensio::fuzz
