#include "core/CsvBuilder.h"
#include "platform/SessionStore.h"
#include "support/Reports.h"

#include <gtest/gtest.h>

using namespace tensio;

TEST(Csv, PutsEveryMeasurementInABlockOfItsOwn)
{
    auto const measurements = finishedMeasurements(2);
    measurements[0]->pressurePoints = {-9.0f, 12.34f};
    // The name stays one cell; a measurement without points keeps its columns.
    EXPECT_EQ(csvFile("山\t田\r\n", "2019/04/01 10:30").build(measurements),
        "氏名\t山 田  \r\n"
        "測定日時\t2019/04/01 10:30\r\n"
        "\r\n"
        "1回目\t\t\t2回目\t\t\t\r\n"
        "最大値（kPa）\t10.0\t\t最大値（kPa）\t11.0\t\t\r\n"
        "目標圧（kPa）\t30.0\t\t目標圧（kPa）\t30.0\t\t\r\n"
        "測定時間（秒）\t測定値（kPa）\t\t測定時間（秒）\t測定値（kPa）\t\t\r\n"
        "0.05\t-9.0\t\t\t\t\t\r\n"
        "0.10\t12.3\t\t\t\t\t\r\n");
    EXPECT_NE(
        csvFile("", "").buildSelected({measurements[0]}, 10.0f, 10.0f, 10.0f).find("①\t10.0\tmax"),
        std::string::npos);
    EXPECT_NE(csvFile("", "").build({measurements[1]}).find("2回目"), std::string::npos);
    EXPECT_EQ(csvFile("", "").build({}), "氏名\t\r\n測定日時\t\r\n\r\n\r\n\r\n\r\n\r\n");
}

TEST(Course, IsOfOneNameAndOfOneKindOfDevice)
{
    SessionSummary const real {1, {}, "山田"};
    SessionSummary const other {2, {}, "山田 "};
    SessionSummary const simulated {3, {}, "山田", 0, 0.0f, false, true};
    for (auto const& [sessions, reason] :
        std::initializer_list<std::pair<std::vector<SessionSummary>, std::optional<std::string>>> {
            {{real}, {}}, {{simulated, simulated}, {}}, {{}, "経過を見る測定を選んでください。"},
            {{real, real, other},
                "氏名の異なる測定は、1つの経過にできません。同じ氏名の測定だけを選んでください。"},
            {{real, simulated}, "模擬装置の測定と実際の測定は、1つの経過にできません。"},
            {std::vector(1000, real), {}},
            {std::vector(1001, real),
                "1つの経過は1000件までです。期間を指定するなどして、測定を減らしてください。"}})
        EXPECT_EQ(courseRefusal(sessions), reason);
}

TEST(Course, IsACsvFileToo)
{
    auto const session = [](char const* start, float target, std::vector<float> const& bests) {
        StoredSession stored {
            {0, ManualClock::localTime(start), "山\t田"}, {}, target, 0.5f, {}, !bests.empty()};
        for (auto const best : bests)
            stored.measurements.push_back({1, best, 99.0f, {}, {}});
        return stored;
    };
    auto const course = courseOf({session("2026-11-20 09:05:00", 70.0f, {}),
        session("2026-04-01 10:30:00", 40.0f, {16.56f, 21.84f})});
    EXPECT_EQ(csvOfCourse(course),
        "氏名\t山 田\r\n測定日時\t2026/04/01 10:30 〜 2026/11/20 09:05\r\n\r\n"
        "記録の一部が壊れているため、含まれていない測定があります。\r\n\r\n"
        "測定日時\t回数\t最大圧（kPa）\t平均（kPa）\t目標圧（kPa）\r\n"
        "2026/04/01 10:30\t2\t21.8\t19.2\t20.0\r\n2026/11/20 09:05\t0\t\t\t35.0\r\n");
}
