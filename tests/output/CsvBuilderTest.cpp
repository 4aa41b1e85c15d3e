#include "output/CsvBuilder.h"

#include "output/CsvReport.h"

#include <gtest/gtest.h>

using namespace tensio;

namespace {

std::shared_ptr<Measurement> finished(int number, float best, std::vector<float> points)
{
    auto measurement = std::make_shared<Measurement>(number);
    measurement->bestPressure = best;
    measurement->targetPressure = 20.0f;
    measurement->timeStamp = Date();
    measurement->pressurePoints = std::move(points);
    return measurement;
}

} // namespace

TEST(CsvBuilder, PutsEveryMeasurementInABlockOfItsOwn)
{
    Measurements const measurements {
        finished(1, 25.3f, {5.0f, 12.34f, 25.3f}), finished(2, 18.0f, {9.0f, 18.0f})};
    EXPECT_EQ(CsvReport().all("山田", "2019/04/01 10:30", measurements),
        "氏名\t山田\r\n"
        "測定日時\t2019/04/01 10:30\r\n"
        "\r\n"
        "1回目\t\t\t2回目\t\t\t\r\n"
        "最大値（kPa）\t25.3\t\t最大値（kPa）\t18.0\t\t\r\n"
        "目標圧（kPa）\t20.0\t\t目標圧（kPa）\t20.0\t\t\r\n"
        "測定時間（秒）\t測定値（kPa）\t\t測定時間（秒）\t測定値（kPa）\t\t\r\n"
        "0.05\t5.0\t\t0.05\t9.0\t\t\r\n"
        "0.10\t12.3\t\t0.10\t18.0\t\t\r\n"
        "0.15\t25.3\t\t\t\t\t\r\n");
}

TEST(CsvBuilder, MarksTheSelectionByPositionAndTagsItsExtremes)
{
    struct Row {
        std::vector<float> bests;
        std::string lines;
        std::string average;
    };
    std::vector<Row> const rows {
        {{25.3f, 20.1f, 22.0f}, "①\t25.3\tmax\r\n②\t20.1\tmin\r\n③\t22.0\t\r\n", "22.5"},
        {{18.0f}, "①\t18.0\tmax\r\n", "18.0"},
        {{30.0f, 30.0f}, "①\t30.0\tmax\r\n②\t30.0\tmax\r\n", "30.0"},
    };
    for (auto const& [bests, lines, average] : rows) {
        Measurements measurements;
        float sum = 0.0f;
        for (auto const best : bests) {
            measurements.push_back(finished(7, best, {}));
            sum += best;
        }
        auto const [min, max] = std::ranges::minmax(bests);
        EXPECT_EQ(CsvReport().selected(
                      "", "", measurements, sum / static_cast<float>(bests.size()), min, max),
            "氏名\t\r\n測定日時\t\r\n\r\n選択した最大圧データ(kPa)\r\n" + lines
                + "\r\n選択した最大圧データの平均値(kPa)\r\n\t" + average + "\r\n");
    }
}

TEST(CsvBuilder, KeepsItsShapeWithoutPointsAndWithoutMeasurements)
{
    CsvBuilder empty("\r\n", "\t");
    EXPECT_EQ(empty.build({}), "\r\n\r\n\r\n\r\n");
    CsvBuilder twenty("\n", "|");
    auto const text
        = twenty.build({finished(1, 1.0f, {}), finished(2, 1.0f, std::vector<float>(20, 1.5f))});
    EXPECT_TRUE(text.ends_with("\n|||1.00|1.5||\n"));
}

TEST(CsvBuilder, ANameStaysOneCell)
{
    CsvBuilder builder("\r\n", "\t");
    EXPECT_EQ(builder.appendHeader("a\tb\r\nc", "d").build({}).substr(0, 15), "氏名\ta b  c\r\n");
}
