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
    EXPECT_EQ(csvFile("山\t田\r\n", "2019/04/01 10:30").build(measurements),
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
    EXPECT_NE(
        csvFile("", "").buildSelected({measurements[0]}, 10.0f, 10.0f, 10.0f).find("①\t10.0\tmax"),
        std::string::npos);
    EXPECT_NE(csvFile("", "").build({measurements[1]}).find("2回目"), std::string::npos);
    EXPECT_EQ(csvFile("", "").build({}), "氏名\t\r\n測定日時\t\r\n\r\n\r\n\r\n\r\n\r\n");
}
