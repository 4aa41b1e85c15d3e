#include "NaiveSession.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace tensio::fuzz {

namespace {

constexpr int tickMilliseconds = 1000;
constexpr std::size_t mostKept = 99;

std::u16string number(double value, int decimals)
{
    std::array<char, 128> text {};
    auto const length = std::snprintf(text.data(), text.size(), "%.*f", decimals, value);
    return {text.data(), text.data() + length};
}

bool isPress(std::vector<float> const& points)
{
    return std::ranges::any_of(points, [](float point) { return point > 0.0f; });
}

float highest(std::vector<float> const& points)
{
    float best = 0.0f;
    for (auto const point : points) {
        if (point > best)
            best = point;
    }
    return best;
}

} // namespace

std::vector<NaiveMeasurement> cutNaively(std::vector<Reading> const& readings)
{
    std::vector<NaiveMeasurement> measurements;
    std::vector<float> points;
    int number = 1;
    auto const endBurst = [&] {
        if (!isPress(points))
            return;
        measurements.push_back({number++, highest(points), points});
        points.clear();
    };

    int burstBegan = 0;
    int lastSecond = 0;
    for (std::size_t index = 0; index < readings.size(); ++index) {
        // A burst goes on while no whole second of its own count passes without a reading.
        auto const time = readings[index].milliseconds;
        auto const second = (time - burstBegan) / tickMilliseconds;
        if (index == 0 || second > lastSecond + 1) {
            endBurst();
            burstBegan = time;
            lastSecond = 0;
        } else {
            lastSecond = second;
        }
        points.push_back(readings[index].pressure);
    }
    endBurst();
    measurements.resize(std::min(measurements.size(), mostKept));
    return measurements;
}

std::u16string naiveCsv(std::vector<NaiveMeasurement> const& measurements, float effectiveTarget,
    std::u16string const& head)
{
    auto text = head;
    std::size_t longest = 0;
    for (auto const& measurement : measurements) {
        text += number(measurement.number, 0) + u"回目\t\t\t";
        longest = std::max(longest, measurement.points.size());
    }
    text += u"\r\n";
    for (auto const& measurement : measurements)
        text += u"最大値（kPa）\t" + number(static_cast<double>(measurement.best), 1) + u"\t\t";
    text += u"\r\n";
    for (std::size_t count = 0; count < measurements.size(); ++count)
        text += u"目標圧（kPa）\t" + number(static_cast<double>(effectiveTarget), 1) + u"\t\t";
    text += u"\r\n";
    for (std::size_t count = 0; count < measurements.size(); ++count)
        text += u"測定時間（秒）\t測定値（kPa）\t\t";
    text += u"\r\n";
    for (std::size_t row = 0; row < longest; ++row) {
        for (auto const& [ordinal, best, points] : measurements) {
            bool const has = row < points.size();
            text += has ? number(static_cast<double>(row + 1) * 0.05, 2) : u"";
            text += u"\t";
            text += has ? number(static_cast<double>(points[row]), 1) : u"";
            text += u"\t\t";
        }
        text += u"\r\n";
    }
    return text;
}

std::u16string naiveSelectedCsv(
    std::vector<NaiveMeasurement> const& measurements, std::u16string const& head)
{
    constexpr std::u16string_view marks = u"①②③";
    auto const count = std::min(measurements.size(), marks.size());
    float sum = 0.0f;
    float low = measurements[0].best;
    float high = measurements[0].best;
    for (std::size_t index = 0; index < count; ++index) {
        sum += measurements[index].best;
        low = std::min(low, measurements[index].best);
        high = std::max(high, measurements[index].best);
    }
    auto text = head + u"選択した最大圧データ(kPa)\r\n";
    for (std::size_t index = 0; index < count; ++index) {
        auto const best = measurements[index].best;
        text += marks[index];
        text += u"\t" + number(static_cast<double>(best), 1) + u"\t";
        text += best == high ? u"max" : best == low ? u"min" : u"";
        text += u"\r\n";
    }
    text += u"\r\n選択した最大圧データの平均値(kPa)\r\n\t";
    return text + number(static_cast<double>(sum / static_cast<float>(count)), 1) + u"\r\n";
}

} // namespace tensio::fuzz
