#include "core/CsvBuilder.h"
#include "support/Reports.h"

#include <gtest/gtest.h>

using namespace tensio;

TEST(Csv, PutsEveryMeasurementInABlockOfItsOwn)
{
    auto const measurements = finishedMeasurements(3);
    measurements[0]->pressurePoints = {5.0f, 12.34f, 10.0f};
    measurements[1]->pressurePoints = {-9.0f, 11.0f};
    // The name stays one cell; a measurement without points keeps its columns.
    EXPECT_EQ(csvOfAll("山\t田\r\n", "2019/04/01 10:30", measurements),
        "氏名\t山 田  \r\n"
        "測定日時\t2019/04/01 10:30\r\n"
        "\r\n"
        "1回目\t\t\t2回目\t\t\t3回目\t\t\t\r\n"
        "最大値（kPa）\t10.0\t\t最大値（kPa）\t11.0\t\t最大値（kPa）\t12.0\t\t\r\n"
        "目標圧（kPa）\t30.0\t\t目標圧（kPa）\t30.0\t\t目標圧（kPa）\t30.0\t\t\r\n"
        "測定時間（秒）\t測定値（kPa）\t\t測定時間（秒）\t測定値（kPa）\t\t"
        "測定時間（秒）\t測定値（kPa）\t\t\r\n"
        "0.05\t5.0\t\t0.05\t-9.0\t\t\t\t\t\r\n"
        "0.10\t12.3\t\t0.10\t11.0\t\t\t\t\t\r\n"
        "0.15\t10.0\t\t\t\t\t\t\t\t\r\n");
    EXPECT_EQ(csvOfAll("", "", {}), "氏名\t\r\n測定日時\t\r\n\r\n\r\n\r\n\r\n\r\n");
}

TEST(Csv, MarksTheSelectionByPositionAndTagsItsExtremes)
{
    struct {
        std::vector<float> bests;
        std::string lines;
    } const rows[] {
        {{25.3f, 20.1f, 22.0f}, "①\t25.3\tmax\r\n②\t20.1\tmin\r\n③\t22.0\t\r\n"},
        {{30.0f, 30.0f}, "①\t30.0\tmax\r\n②\t30.0\tmax\r\n"},
    };
    for (auto const& [bests, lines] : rows) {
        auto const measurements = finishedMeasurements(static_cast<int>(bests.size()));
        for (std::size_t index = 0; index < bests.size(); ++index)
            measurements[index]->bestPressure = bests[index];
        auto const [min, max] = std::ranges::minmax(bests);
        EXPECT_EQ(csvOfSelected("名", "日", measurements, 22.47f, min, max),
            "氏名\t名\r\n測定日時\t日\r\n\r\n選択した最大圧データ(kPa)\r\n" + lines
                + "\r\n選択した最大圧データの平均値(kPa)\r\n\t22.5\r\n");
    }
}
