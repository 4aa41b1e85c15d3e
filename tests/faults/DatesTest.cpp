#include "core/DateText.h"
#include "core/Utf16.h"
#include "output/ListPrintView.h"
#include "support/RecordingCanvas.h"
#include "support/Session.h"

#include <clocale>
#include <cstdlib>
#include <ctime>
#include <gtest/gtest.h>

using namespace tensio;

namespace {

class TimeZone {
public:
    explicit TimeZone(char const* zone)
        : m_before(std::getenv("TZ") ? std::getenv("TZ") : "")
    {
        set(zone);
    }
    TimeZone(TimeZone const&) = delete;
    TimeZone& operator=(TimeZone const&) = delete;
    ~TimeZone() { set(m_before.c_str()); }

private:
    static void set(char const* zone)
    {
        setenv("TZ", zone, 1);
        tzset();
    }
    std::string m_before;
};

Date at(long long secondsSince1970)
{
    return Date(std::chrono::seconds(secondsSince1970));
}

} // namespace

TEST(Dates, AreThoseOfTheUsersClock)
{
    struct Row {
        char const* zone;
        long long seconds;
        char const* text;
    };
    // Zones as rules, so that no data base of zones is needed.
    std::vector<Row> const rows {{"UTC0", 1709164799, "2024/02/28 23:59:59"},
        {"UTC0", 1709164800, "2024/02/29 00:00:00"}, {"UTC0", 1709251199, "2024/02/29 23:59:59"},
        {"UTC0", 1709251200, "2024/03/01 00:00:00"}, {"JST-9", 1709164800, "2024/02/29 09:00:00"},
        {"JST-9", 1704034800, "2024/01/01 00:00:00"},
        {"EST5EDT,M3.2.0,M11.1.0", 1710053999, "2024/03/10 01:59:59"},
        {"EST5EDT,M3.2.0,M11.1.0", 1710054000, "2024/03/10 03:00:00"},
        {"XXX-5:45", 1709164800, "2024/02/29 05:45:00"}};
    for (auto const& [zone, seconds, text] : rows) {
        TimeZone const user(zone);
        EXPECT_EQ(formatLocalTime(at(seconds), "%Y/%m/%d %H:%M:%S"), text) << zone;
    }
}

TEST(Dates, AClockThatStepsBackChangesNoMeasurement)
{
    Session session;
    session.connect();
    session.press({10.0});
    session.clock.date -= std::chrono::hours(1);
    session.receive({20.0});
    session.clock.date += std::chrono::hours(24 * 365);
    session.runLoop.advance(Seconds(0.9));
    session.receive({30.0});
    session.runLoop.advance(Seconds(2.5));
    EXPECT_EQ(session.bestPressures(), (std::vector {10.0f, 30.0f}));
    auto const& measurements = session.manager.measurementList.measurements();
    EXPECT_EQ(measurements[1]->pressurePoints, (std::vector {20.0f, 30.0f}));
}

TEST(Dates, FilesAndReportsAreTheSameUnderEveryLocale)
{
    // The application has set the locale of the environment, if the system has that one.
    if (auto const* point = std::getenv("TENSIO_DECIMAL_POINT")) {
        ASSERT_STREQ(std::localeconv()->decimal_point, point);
    }
    TimeZone const user("UTC0");
    Session session;
    session.clock.date = at(1709164800);
    session.connect(12.5f);
    session.press({1234.5, 10.25});
    session.saving.answer = "file.csv";
    session.manager.saveCsv();
    EXPECT_EQ(session.saving.written,
        encodeUtf16("氏名\t\r\n測定日時\t2024/02/29 00:00\r\n\r\n"
                    "1回目\t\t\t\r\n最大値（kPa）\t999.9\t\t\r\n目標圧（kPa）\t12.5\t\t\r\n"
                    "測定時間（秒）\t測定値（kPa）\t\t\r\n0.05\t999.9\t\t\r\n0.10\t10.3\t\t\r\n"));
    ListPrintView list("", session.manager.measurementList.measurements());
    list.paginate({}, RecordingCanvas());
    std::string report;
    for (auto const& drawn : draw(list, 1).texts)
        report += drawn.text + "|";
    EXPECT_EQ(report,
        "氏名|測定日時|計測回数|最大圧|目標圧||2024年 2月29日 00:00:00|1 回目|999.9 kPa|12.5 kPa|");
}
